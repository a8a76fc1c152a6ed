#pragma once

#include <QDialog>
#include <QLabel>
#include <QList>
#include <QToolButton>

namespace Frame {

// The new-file chooser: six large buttons, "Open an Existing File" and one for each kind of
// new document. It only records the choice and closes; the main window then acts on it, so
// the chooser is gone before any document window appears.
class frmNewFile : public QDialog
{
    Q_OBJECT

public:
    // Button 0 opens an existing file; buttons 1 to 5 make a new document of these types.
    static constexpr int ButtonDocTypes[6] = { 0, 1, 5, 2, 3, 4 };

    explicit frmNewFile(QWidget* owner = nullptr);

    // The button clicked, 0 to 5; -1 when the chooser was closed without a choice.
    int Choice() const { return m_choice; }

    QLabel* lblSelect = nullptr;
    QList<QToolButton*> Command1;

private:
    void Command1_Click(int index);

    int m_choice = -1;
};

} // namespace Frame
