#include "graph/ui/frmLineGraphOptions.h"

#include "frame/ui/WidgetHelpers.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QVBoxLayout>

namespace Ormsey {

frmLineGraphOptions::frmLineGraphOptions(QWidget* parent)
    : OptionsDialog(parent)
{
    setObjectName(QStringLiteral("frmLineGraphOptions"));
    auto* columns = new QHBoxLayout;
    body()->addLayout(columns);

    auto* axis = Tagged(new QGroupBox(this), 10001);
    auto* axisLayout = new QFormLayout(axis);
    chkAutoScale = Tagged(new QCheckBox(axis), 10002);
    axisLayout->addRow(chkAutoScale);
    QLineEdit** boxes[] = { &txtXMinimum, &txtXMaximum, &txtYMinimum, &txtYMaximum };
    int id = 10021;
    for (QLineEdit** box : boxes) {
        auto* label = Tagged(new QLabel(axis), id++);
        *box = new QLineEdit(axis);
        label->setBuddy(*box);
        axisLayout->addRow(label, *box);
        m_rangeControls << label << *box;
    }
    columns->addWidget(axis);

    fraScattergram = new QGroupBox(this);
    auto* scatterLayout = new QVBoxLayout(fraScattergram);
    auto* dotType = Tagged(new QGroupBox(fraScattergram), 10025);
    auto* dotLayout = new QVBoxLayout(dotType);
    for (int dot : { 10060, 10061, 10062, 10063 }) {
        optDotType.append(Tagged(new QRadioButton(dotType), dot));
        dotLayout->addWidget(optDotType.last());
    }
    scatterLayout->addWidget(dotType);
    chkLineOfBestFit = Tagged(new QCheckBox(fraScattergram), 10027);
    chkCorrelation = Tagged(new QCheckBox(fraScattergram), 10028);
    scatterLayout->addWidget(chkLineOfBestFit);
    scatterLayout->addWidget(chkCorrelation);
    columns->addWidget(fraScattergram);

    chkJoinPoints = Tagged(new QCheckBox(this), 10064);
    chkColour = Tagged(new QCheckBox(this), 10026);
    chkLegend = Tagged(new QCheckBox(this), 10013);
    for (QCheckBox* box : { chkJoinPoints, chkColour, chkLegend })
        body()->addWidget(box);

    BindAutoScale(chkAutoScale, m_rangeControls, txtXMinimum);
    Localise();
}

void frmLineGraphOptions::SetOptions(const LineGraphOptions& options, bool scattergram)
{
    chkAutoScale->setChecked(options.autoScale);
    txtXMinimum->setText(options.xMinimum);
    txtXMaximum->setText(options.xMaximum);
    txtYMinimum->setText(options.yMinimum);
    txtYMaximum->setText(options.yMaximum);
    for (qsizetype index = 0; index < optDotType.size(); ++index)
        optDotType[index]->setChecked(index == options.pointType);
    chkLineOfBestFit->setChecked(options.lineOfBestFit);
    chkCorrelation->setChecked(options.correlation);
    chkJoinPoints->setChecked(options.joinPoints);
    chkColour->setChecked(options.useColour);
    chkLegend->setChecked(options.displayLegend);
    // A disabled frame disables everything inside it.
    fraScattergram->setEnabled(scattergram);
    chkJoinPoints->setEnabled(!scattergram);
    EnableRange(chkAutoScale, m_rangeControls);
}

LineGraphOptions frmLineGraphOptions::Options() const
{
    LineGraphOptions options;
    options.autoScale = chkAutoScale->isChecked();
    options.xMinimum = txtXMinimum->text();
    options.xMaximum = txtXMaximum->text();
    options.yMinimum = txtYMinimum->text();
    options.yMaximum = txtYMaximum->text();
    options.pointType = std::max(0, Frame::SelectedOptionIndex(optDotType));
    options.lineOfBestFit = chkLineOfBestFit->isChecked();
    options.correlation = chkCorrelation->isChecked();
    options.joinPoints = chkJoinPoints->isChecked();
    options.useColour = chkColour->isChecked();
    options.displayLegend = chkLegend->isChecked();
    return options;
}

bool frmLineGraphOptions::CheckContents()
{
    if (chkAutoScale->isChecked())
        return true;
    return CheckRangeBoxes(txtXMinimum, txtXMaximum) && CheckRangeBoxes(txtYMinimum, txtYMaximum);
}

} // namespace Ormsey
