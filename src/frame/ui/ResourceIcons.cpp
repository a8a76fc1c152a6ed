#include "frame/ui/ResourceIcons.h"

#include <QHash>

using namespace Qt::Literals::StringLiterals;

namespace Frame {

namespace {

const QHash<int, QString>& IconFiles()
{
    static const QHash<int, QString> files {
        { 105, u"bar-chart"_s },
        { 106, u"pie-chart"_s },
        { 107, u"line-graph"_s },
        { 108, u"scattergram"_s },
        { 109, u"new-graph"_s },
        { 110, u"new-card-database"_s },
        { 111, u"velkin"_s },
        { 112, u"sprondle"_s },
        { 113, u"new-spreadsheet"_s },
        { 114, u"first-record"_s },
        { 115, u"previous-record"_s },
        { 116, u"next-record"_s },
        { 117, u"last-record"_s },
        { 118, u"count-window"_s },
        { 122, u"make-3d"_s },
        { 123, u"options"_s },
        { 124, u"text-style"_s },
        { 125, u"cell-style"_s },
        { 126, u"number-format"_s },
        { 127, u"open"_s },
        { 128, u"save"_s },
        { 129, u"print"_s },
        { 130, u"make-graph"_s },
        { 131, u"program"_s },
        { 132, u"create-formula"_s },
        { 133, u"web-address"_s },
        { 134, u"linked-file"_s },
        { 137, u"picture-library"_s },
        { 138, u"refresh"_s },
        { 139, u"find-card"_s },
        { 140, u"create-query"_s },
        { 142, u"queries-window"_s },
        { 143, u"copy-cell"_s },
    };
    return files;
}

} // namespace

QString ResourceIconPath(int resourceNumber)
{
    const auto found = IconFiles().constFind(resourceNumber);
    if (found == IconFiles().constEnd())
        return {};
    return u":/icons/"_s + *found + u".svg"_s;
}

QIcon ResourceIcon(int resourceNumber)
{
    const QString path = ResourceIconPath(resourceNumber);
    return path.isEmpty() ? QIcon() : QIcon(path);
}

const QList<int>& ToolbarIconNumbers()
{
    static const QList<int> numbers { 127, 128, 129, 130, 105, 106, 107, 108, 114, 115, 116, 117,
        118, 122, 123, 124, 125, 126, 132, 137, 138, 139, 140, 142 };
    return numbers;
}

} // namespace Frame
