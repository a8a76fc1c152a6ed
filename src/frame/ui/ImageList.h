#pragma once

#include <QIcon>
#include <QList>

namespace Frame {

// An image list as the toolbars use it: icons by index, counted from 1.
class ImageList
{
public:
    void add(const QIcon& icon) { m_images.append(icon); }
    void clear() { m_images.clear(); }
    int count() const { return int(m_images.size()); }
    // The icon at `index` (1 to count()); a null icon outside.
    QIcon ListImages(int index) const;

private:
    QList<QIcon> m_images;
};

} // namespace Frame
