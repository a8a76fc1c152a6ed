#pragma once

#include <QDialog>
#include <QImage>
#include <QLabel>
#include <QScrollArea>

namespace Frame {

// Shows one picture at full size; scroll bars appear when it is larger than the screen.
class frmPicture : public QDialog
{
    Q_OBJECT

public:
    explicit frmPicture(QWidget* owner = nullptr);

    // Shows `picture` and sizes the window to it, at most to the screen's working area.
    void SetPicture(const QImage& picture);

    QScrollArea* scrollArea = nullptr;
    QLabel* picPicture = nullptr;
};

} // namespace Frame
