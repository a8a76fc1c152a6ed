#pragma once

#include "graph/GraphOptions.h"
#include "graph/ui/OptionsDialog.h"

#include <QList>

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QRadioButton;

namespace Ormsey {

// Bar chart options: the value axis range, the kind of bars, colours and the legend.
class frmBarChartOptions : public OptionsDialog
{
    Q_OBJECT

public:
    explicit frmBarChartOptions(QWidget* parent = nullptr);

    void SetOptions(const BarChartOptions& options);
    BarChartOptions Options() const;

    QCheckBox* chkAutoScale = nullptr;
    QLabel* lblMinimum = nullptr;
    QLineEdit* txtMinimum = nullptr;
    QLabel* lblMaximum = nullptr;
    QLineEdit* txtMaximum = nullptr;
    QList<QRadioButton*> optBarType; // solid bars, bar-line, histogram
    QCheckBox* chkColour = nullptr;
    QComboBox* cmbHistogramColour = nullptr;
    QComboBox* cmbBackgroundColour = nullptr;
    QCheckBox* chkLegend = nullptr;

signals:
    void ReadBarChartOptions();

protected:
    bool CheckContents() override;
    void HandOver() override { emit ReadBarChartOptions(); }

private:
    QList<QWidget*> rangeControls() const;
};

} // namespace Ormsey
