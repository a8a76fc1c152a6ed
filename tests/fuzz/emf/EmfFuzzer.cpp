// Any bytes as an enhanced metafile: reading, tracing, playing onto a painter and playing into
// another recording must neither crash nor read out of bounds, and a picture played into a
// recording must come out as a sound picture again.
#include "platform/emf/Picture.h"
#include "platform/emf/Player.h"
#include "platform/emf/RecordTrace.h"
#include "platform/emf/RecordingContext.h"

#include <QGuiApplication>
#include <QImage>
#include <cstdint>
#include <cstdlib>
#include <memory>

using namespace Qt::Literals::StringLiterals;

// Fontconfig keeps what it allocates for each face name it is asked about, for the life of
// the process; names from the input would otherwise show up as leaks.
extern "C" const char* __lsan_default_suppressions()
{
    return "leak:libfontconfig\n";
}

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv)
{
    // Text needs fonts, and fonts need a GUI application; no display is used.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static std::unique_ptr<QGuiApplication> application
        = std::make_unique<QGuiApplication>(*argc, *argv);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char*>(data), qsizetype(size));
    const Emf::Picture picture = Emf::Picture::fromBytes(bytes);
    if (!picture.isValid())
        return 0;
    Emf::TraceRecords(picture);

    // Small, so that each input plays quickly; the transforms still reach every record.
    Emf::RenderPicture(picture, QSize(48, 32));
    Emf::RenderPicture(picture, QSize(32, 48), Qt::white, Emf::Scaling::KeepProportions);

    Emf::RecordingContext recording(
        Emf::ReferenceDevice::Screen(), { 0, 0, 5000, 5000 }, u"Fuzz"_s);
    Emf::PlayPicture(picture, recording, Emf::RectL { 10, 10, 150, 120 });
    const Emf::Picture copy = recording.finish();
    if (!copy.isValid() || !copy.errorText().isEmpty())
        std::abort();
    return 0;
}
