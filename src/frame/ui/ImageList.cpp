#include "frame/ui/ImageList.h"

namespace Frame {

QIcon ImageList::ListImages(int index) const
{
    if (index < 1 || index > m_images.size())
        return {};
    return m_images[index - 1];
}

} // namespace Frame
