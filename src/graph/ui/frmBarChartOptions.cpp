#include "graph/ui/frmBarChartOptions.h"

#include "frame/ui/WidgetHelpers.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QVBoxLayout>

namespace Ormsey {

frmBarChartOptions::frmBarChartOptions(QWidget* parent)
    : OptionsDialog(parent)
{
    setObjectName(QStringLiteral("frmBarChartOptions"));
    auto* columns = new QHBoxLayout;
    body()->addLayout(columns);

    auto* axis = Tagged(new QGroupBox(this), 10001);
    auto* axisLayout = new QFormLayout(axis);
    chkAutoScale = Tagged(new QCheckBox(axis), 10002);
    axisLayout->addRow(chkAutoScale);
    lblMinimum = Tagged(new QLabel(axis), 10003);
    txtMinimum = new QLineEdit(axis);
    lblMinimum->setBuddy(txtMinimum);
    axisLayout->addRow(lblMinimum, txtMinimum);
    lblMaximum = Tagged(new QLabel(axis), 10004);
    txtMaximum = new QLineEdit(axis);
    lblMaximum->setBuddy(txtMaximum);
    axisLayout->addRow(lblMaximum, txtMaximum);
    columns->addWidget(axis);

    auto* barType = Tagged(new QGroupBox(this), 10005);
    auto* barTypeLayout = new QVBoxLayout(barType);
    for (int id : { 10006, 10007, 10008 }) {
        optBarType.append(Tagged(new QRadioButton(barType), id));
        barTypeLayout->addWidget(optBarType.last());
    }
    columns->addWidget(barType);

    auto* colour = Tagged(new QGroupBox(this), 10009);
    auto* colourLayout = new QFormLayout(colour);
    chkColour = Tagged(new QCheckBox(colour), 10010);
    colourLayout->addRow(chkColour);
    // Each caption is its box's buddy, so its "&" letter moves there instead of showing.
    for (const auto& [id, box] :
        { std::pair { 10011, &cmbHistogramColour }, std::pair { 10012, &cmbBackgroundColour } }) {
        *box = new QComboBox(colour);
        auto* caption = Tagged(new QLabel(colour), id);
        caption->setBuddy(*box);
        colourLayout->addRow(caption, *box);
    }
    body()->addWidget(colour);

    chkLegend = Tagged(new QCheckBox(this), 10013);
    body()->addWidget(chkLegend);

    FillColourList(cmbHistogramColour);
    FillColourList(cmbBackgroundColour);
    BindAutoScale(chkAutoScale, rangeControls(), txtMinimum);
    Localise();
}

QList<QWidget*> frmBarChartOptions::rangeControls() const
{
    return { lblMinimum, txtMinimum, lblMaximum, txtMaximum };
}

void frmBarChartOptions::SetOptions(const BarChartOptions& options)
{
    chkAutoScale->setChecked(options.autoScale);
    txtMinimum->setText(options.minimum);
    txtMaximum->setText(options.maximum);
    if (options.barType >= 0 && options.barType < optBarType.size())
        optBarType[options.barType]->setChecked(true);
    chkColour->setChecked(options.useColour);
    chkLegend->setChecked(options.displayLegend);
    SelectColourName(cmbHistogramColour, options.histogramColourName);
    SelectColourName(cmbBackgroundColour, options.backgroundColourName);
    EnableRange(chkAutoScale, rangeControls());
}

BarChartOptions frmBarChartOptions::Options() const
{
    BarChartOptions options;
    options.autoScale = chkAutoScale->isChecked();
    options.minimum = txtMinimum->text();
    options.maximum = txtMaximum->text();
    options.barType = std::max(0, Frame::SelectedOptionIndex(optBarType));
    options.useColour = chkColour->isChecked();
    options.displayLegend = chkLegend->isChecked();
    options.histogramColourName = cmbHistogramColour->currentText();
    options.backgroundColourName = cmbBackgroundColour->currentText();
    return options;
}

bool frmBarChartOptions::CheckContents()
{
    return chkAutoScale->isChecked() || CheckRangeBoxes(txtMinimum, txtMaximum);
}

} // namespace Ormsey
