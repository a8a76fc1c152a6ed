#pragma once

#include "graph/GraphOptions.h"
#include "graph/ui/OptionsDialog.h"

#include <QList>

class QCheckBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QRadioButton;

namespace Ormsey {

// Line graph and scattergram options: both axes' ranges, colours and the legend for both
// kinds; the dot type, best-fit line and correlation only for scattergrams (their frame is
// disabled for line graphs), and joining the points only for line graphs.
class frmLineGraphOptions : public OptionsDialog
{
    Q_OBJECT

public:
    explicit frmLineGraphOptions(QWidget* parent = nullptr);

    // `scattergram` decides which of the kind-only controls are enabled.
    void SetOptions(const LineGraphOptions& options, bool scattergram);
    LineGraphOptions Options() const;

    QCheckBox* chkAutoScale = nullptr;
    QLineEdit* txtXMinimum = nullptr;
    QLineEdit* txtXMaximum = nullptr;
    QLineEdit* txtYMinimum = nullptr;
    QLineEdit* txtYMaximum = nullptr;
    QGroupBox* fraScattergram = nullptr;
    QList<QRadioButton*> optDotType; // cross, single point, circle, none
    QCheckBox* chkLineOfBestFit = nullptr;
    QCheckBox* chkCorrelation = nullptr;
    QCheckBox* chkJoinPoints = nullptr;
    QCheckBox* chkColour = nullptr;
    QCheckBox* chkLegend = nullptr;

signals:
    void ReadLineGraphOptions();

protected:
    bool CheckContents() override;
    void HandOver() override { emit ReadLineGraphOptions(); }

private:
    QList<QWidget*> m_rangeControls;
};

} // namespace Ormsey
