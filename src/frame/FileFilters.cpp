#include "frame/FileFilters.h"

using namespace Qt::Literals::StringLiterals;

namespace Frame {

QStringList QtNameFilters(QStringView programFilter)
{
    QStringList filters;
    const QList<QStringView> parts = programFilter.split(u'|');
    for (qsizetype index = 0; index + 1 < parts.size(); index += 2) {
        QStringList patterns;
        for (const QStringView pattern : parts[index + 1].split(u';', Qt::SkipEmptyParts)) {
            const QStringView trimmed = pattern.trimmed();
            if (!trimmed.isEmpty())
                patterns.append(trimmed.toString());
        }
        filters.append(parts[index].trimmed().toString() + u" ("_s + patterns.join(u' ') + u')');
    }
    return filters;
}

} // namespace Frame
