// Any bytes as a sheet file: the reader must neither crash nor read out of bounds, and a sheet
// it reads completely must write out as a file that reads back to the same bytes.
#include "sheet/Sheet.h"
#include "sheet/SheetFile.h"

#include <QByteArray>
#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArrayView bytes(reinterpret_cast<const char*>(data), qsizetype(size));
    Tillane::Sheet sheet;
    const Tillane::SheetReadResult result = Tillane::ReadSheet(bytes, sheet);
    if (result.isComplete() != result.message.isEmpty())
        std::abort();

    // Whatever was kept, complete or not, is a sheet the program can save and open again.
    const QByteArray written = Tillane::SheetFileBytes(sheet);
    Tillane::Sheet again;
    if (!Tillane::ReadSheet(written, again).isComplete())
        std::abort();
    if (Tillane::SheetFileBytes(again) != written)
        std::abort();
    return 0;
}
