#pragma once

#include "graph/GraphOptions.h"
#include "graph/ui/OptionsDialog.h"

#include <QList>

class QCheckBox;
class QRadioButton;

namespace Ormsey {

// Pie chart options: labels and percentages, where the first sector starts, colours and the
// legend. Nothing here can be wrong, so OK and Apply hand over at once.
class frmPieChartOptions : public OptionsDialog
{
    Q_OBJECT

public:
    explicit frmPieChartOptions(QWidget* parent = nullptr);

    void SetOptions(const PieChartOptions& options);
    PieChartOptions Options() const;

    QCheckBox* chkLabels = nullptr;
    QCheckBox* chkPercentages = nullptr;
    // Indexed as the angle counts them: three, twelve, nine and six o'clock.
    QList<QRadioButton*> optStartingPosition;
    QCheckBox* chkColour = nullptr;
    QCheckBox* chkLegend = nullptr;

signals:
    void ReadPieChartOptions();

protected:
    void HandOver() override { emit ReadPieChartOptions(); }

private:
    // Kept when the graph's angle is none of the four buttons and the user chooses none.
    int m_unlistedPosition = -1;
};

} // namespace Ormsey
