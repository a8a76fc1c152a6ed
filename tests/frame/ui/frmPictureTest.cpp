#include "frame/ui/frmPicture.h"

#include <QGuiApplication>
#include <QScreen>
#include <QScrollBar>
#include <gtest/gtest.h>

namespace {

QImage Filled(int width, int height)
{
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(Qt::darkCyan);
    return image;
}

TEST(frmPicture, SmallPictureIsShownWholeALargeOneScrolls)
{
    Frame::frmPicture window;
    window.SetPicture(Filled(320, 200));
    window.show();
    EXPECT_EQ(window.picPicture->pixmap().size(), QSize(320, 200));
    EXPECT_GE(window.scrollArea->viewport()->width(), 320);
    EXPECT_GE(window.scrollArea->viewport()->height(), 200);
    EXPECT_EQ(window.scrollArea->horizontalScrollBar()->maximum(), 0);
    EXPECT_EQ(window.scrollArea->verticalScrollBar()->maximum(), 0);
    const QSize screen = QGuiApplication::primaryScreen()->availableGeometry().size();
    window.SetPicture(Filled(screen.width() * 2, screen.height() * 2));
    EXPECT_LE(window.width(), screen.width());
    EXPECT_LE(window.height(), screen.height());
    EXPECT_GT(window.scrollArea->horizontalScrollBar()->maximum(), 0);
    EXPECT_GT(window.scrollArea->verticalScrollBar()->maximum(), 0);
}

} // namespace
