#include "frame/ui/frmPicture.h"

#include "frame/ui/WidgetHelpers.h"

#include <QGuiApplication>
#include <QPixmap>
#include <QScreen>
#include <QStyle>
#include <QVBoxLayout>
#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace Frame {

frmPicture::frmPicture(QWidget* owner)
    : QDialog(owner)
{
    setWindowTitle(u"Quorbin"_s);
    picPicture = new QLabel;
    picPicture->setAlignment(Qt::AlignCenter);
    scrollArea = new QScrollArea;
    scrollArea->setWidget(picPicture);
    scrollArea->setAlignment(Qt::AlignCenter);
    scrollArea->setFrameShape(QFrame::NoFrame);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(scrollArea);
}

void frmPicture::SetPicture(const QImage& picture)
{
    picPicture->setPixmap(QPixmap::fromImage(picture));
    picPicture->resize(picture.size());

    // Room for the window's frame and a scroll bar is kept off the working area.
    const QScreen* screen
        = this->screen() != nullptr ? this->screen() : QGuiApplication::primaryScreen();
    QSize limit(800, 600);
    if (screen != nullptr)
        limit = screen->availableGeometry().size() - QSize(64, 96);
    const int scrollBar = style()->pixelMetric(QStyle::PM_ScrollBarExtent);
    const int width = picture.width() > limit.width() ? limit.width() : picture.width() + 2;
    const int height = picture.height() > limit.height() ? limit.height() : picture.height() + 2;
    const bool scrolls = picture.width() > limit.width() || picture.height() > limit.height();
    SetClientWidth(this, std::min(limit.width(), width + (scrolls ? scrollBar : 0)));
    SetClientHeight(this, std::min(limit.height(), height + (scrolls ? scrollBar : 0)));
}

} // namespace Frame
