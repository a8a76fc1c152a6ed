#pragma once

#include <QString>
#include <ostream>

// Shows QString values as text in failure messages instead of bytes.
inline void PrintTo(const QString& text, std::ostream* stream)
{
    *stream << '"' << text.toStdString() << '"';
}
