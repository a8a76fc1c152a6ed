#pragma once

#include "platform/emf/Picture.h"

#include <QByteArrayView>
#include <QString>
#include <QStringList>

namespace Emf {

// One line of text per record with its decoded fields, for tests and for looking into a
// picture by hand. Colours are shown as 0xBBGGRR, stock objects by name, for example:
//   EXTCREATEPEN 1 style 0x12200 width 3 colour 0x0000FF
//   SELECTOBJECT NULL_PEN
//   POLYGON 10,10 10,30 50,30 50,10
//   EXTTEXTOUTW 10,20 "Total"
// Records without a decoder show their type number and size; damaged fields show "?".
QStringList TraceRecords(const Picture& picture);
QString TraceRecord(std::uint32_t type, QByteArrayView record);

} // namespace Emf
