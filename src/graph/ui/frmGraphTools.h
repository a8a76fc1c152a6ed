#pragma once

#include <QDialog>
#include <QList>

class QAction;
class QLineEdit;
class QToolBar;

namespace Ormsey {

// The floating graph tools palette: the four kinds of graph, 3D, the options dialog and the
// title. It only reports what the user did; the graph it serves takes the changes.
class frmGraphTools : public QDialog
{
    Q_OBJECT

public:
    explicit frmGraphTools(QWidget* parent = nullptr);

    // Before showing: the current type's button pressed, 3D as the graph has it, options
    // only when there are data, and the graph's title in the box.
    void SetState(int graphType, bool threeDimensional, bool hasData, const QString& title);

    QToolBar* Toolbar = nullptr;
    // Bar chart, pie chart, line graph, scattergram.
    QList<QAction*> TypeButtons;
    QAction* Make3DButton = nullptr;
    QAction* OptionsButton = nullptr;
    QLineEdit* txtGraphTitle = nullptr;

signals:
    void GraphTypeChanged(int newType);
    void Make3D(bool on);
    void ShowOptions();
    void GraphTitleChanged(const QString& title);

protected:
    void closeEvent(QCloseEvent* event) override;
};

} // namespace Ormsey
