#pragma once

#include "platform/emf/EmfTypes.h"
#include "platform/emf/PageState.h"
#include "platform/emf/Picture.h"

#include <QRectF>
#include <QTransform>
#include <map>
#include <vector>

namespace Emf {

class RecordingContext;

// Copies the records of one picture into another recording (printing and export play one
// picture into another). Objects get slots of the recording; transform and mapping records
// are followed here and written as one world transform that also places the picture; clip
// regions, which are in device pixels, are moved to the target; anything that could reach
// outside the copied picture (unbalanced state restores, comments) is left out.
class RecordingPlayback
{
public:
    RecordingPlayback(const Picture& picture, RecordingContext& recording, const QRectF& placed);
    void run();

private:
    void copy(std::uint32_t type, QByteArrayView record);
    void writeTransform();
    bool remapHandle(QByteArray& record, qsizetype offset);
    void createObject(QByteArray& record);
    void deleteObject(std::uint32_t handle);
    void clipRegion(QByteArrayView record);

    const Picture& m_picture;
    RecordingContext& m_recording;
    QRectF m_placed;
    QTransform m_outer; // placement, then the recording's own world transform
    PageState m_page;
    std::vector<PageState> m_savedPages;
    std::map<std::uint32_t, ObjectHandle> m_handles; // picture's slot -> recording's slot
};

} // namespace Emf
