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
        // A description that already ends with its patterns ("Pictures (*.emf)") keeps them once.
        const QString description = parts[index].trimmed().toString();
        const QString shown = u" ("_s + patterns.join(u' ') + u')';
        filters.append(description.endsWith(shown) ? description : description + shown);
    }
    return filters;
}

} // namespace Frame
