#include "graph/ui/frmPieChartOptions.h"

#include "frame/ui/WidgetHelpers.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QRadioButton>
#include <QVBoxLayout>

namespace Ormsey {

frmPieChartOptions::frmPieChartOptions(QWidget* parent)
    : OptionsDialog(parent)
{
    setObjectName(QStringLiteral("frmPieChartOptions"));
    auto* columns = new QHBoxLayout;
    body()->addLayout(columns);

    auto* labels = Tagged(new QGroupBox(this), 10031);
    auto* labelsLayout = new QVBoxLayout(labels);
    chkLabels = Tagged(new QCheckBox(labels), 10032);
    chkPercentages = Tagged(new QCheckBox(labels), 10033);
    labelsLayout->addWidget(chkLabels);
    labelsLayout->addWidget(chkPercentages);
    columns->addWidget(labels);

    // Laid out as a clock face: twelve at the top, three on the right, six at the bottom.
    auto* start = Tagged(new QGroupBox(this), 10034);
    auto* clock = new QGridLayout(start);
    auto* three = Tagged(new QRadioButton(start), 10036);
    auto* twelve = Tagged(new QRadioButton(start), 10035);
    auto* nine = Tagged(new QRadioButton(start), 10038);
    auto* six = Tagged(new QRadioButton(start), 10037);
    clock->addWidget(twelve, 0, 1);
    clock->addWidget(nine, 1, 0);
    clock->addWidget(three, 1, 2);
    clock->addWidget(six, 2, 1);
    optStartingPosition = { three, twelve, nine, six };
    // Exclusive by hand, so that "none chosen" can be shown for an angle of another file.
    auto* group = new QButtonGroup(this);
    group->setExclusive(false);
    for (QRadioButton* button : optStartingPosition) {
        button->setAutoExclusive(false);
        group->addButton(button);
        connect(button, &QRadioButton::toggled, this, [this, button](bool on) {
            if (!on)
                return;
            for (QRadioButton* other : optStartingPosition)
                other->setChecked(other == button);
        });
    }
    columns->addWidget(start);

    chkColour = Tagged(new QCheckBox(this), 10039);
    chkLegend = Tagged(new QCheckBox(this), 10013);
    body()->addWidget(chkColour);
    body()->addWidget(chkLegend);
    Localise();
}

void frmPieChartOptions::SetOptions(const PieChartOptions& options)
{
    chkLabels->setChecked(options.showLabels);
    chkPercentages->setChecked(options.showPercentages);
    for (qsizetype index = 0; index < optStartingPosition.size(); ++index)
        optStartingPosition[index]->setChecked(index == options.startingPosition);
    m_unlistedPosition = options.startingPosition;
    chkColour->setChecked(options.useColour);
    chkLegend->setChecked(options.displayLegend);
}

PieChartOptions frmPieChartOptions::Options() const
{
    PieChartOptions options;
    options.showLabels = chkLabels->isChecked();
    options.showPercentages = chkPercentages->isChecked();
    const int chosen = Frame::SelectedOptionIndex(optStartingPosition);
    options.startingPosition = chosen >= 0 ? chosen : m_unlistedPosition;
    options.useColour = chkColour->isChecked();
    options.displayLegend = chkLegend->isChecked();
    return options;
}

} // namespace Ormsey
