#pragma once

#include <QDialog>
#include <QLabel>
#include <QPushButton>

namespace Frame {

// The about box: the program's title and version.
class frmAbout : public QDialog
{
    Q_OBJECT

public:
    explicit frmAbout(QWidget* owner = nullptr);

    // "Version 1.0.0": major.minor.revision of this build.
    static QString VersionText();

    QLabel* lblTitle = nullptr;
    QLabel* lblVersion = nullptr;
    QPushButton* cmdOK = nullptr;
};

} // namespace Frame
