#pragma once

#include <QByteArrayView>
#include <QString>

namespace Profile {

// Text files are UTF-8 on this system, but teachers bring files made on Windows in its
// code page. Each line that is valid UTF-8 is read as UTF-8, any other line as Windows-1252,
// so one stray byte does not turn a whole file into mojibake. A leading UTF-8 byte-order
// mark is dropped. Line-end bytes are kept as they are.
QString DecodeSystemText(QByteArrayView bytes);

// Windows-1252 to Unicode; the five bytes the code page leaves undefined map to the C1
// control characters of the same number, as the Windows converter does.
QString DecodeWindows1252(QByteArrayView bytes);

} // namespace Profile
