#include "graph/PictureExport.h"

#include "graph/Graph.h"
#include "platform/emf/Player.h"
#include "platform/io/SafeFileWriter.h"
#include "resources/StringTable.h"

#include <QBuffer>
#include <QFileInfo>
#include <QImage>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QSvgGenerator>
#include <algorithm>
#include <cmath>

using namespace Qt::Literals::StringLiterals;

namespace Ormsey {

namespace {

constexpr int emfFilterText = 581;
// The further pictures a pupil's word processor or web page takes when it takes no metafile.
constexpr int pictureFilterTexts[] = { 585, 586, 587 };

QString WriteBytes(const QString& path, const QByteArray& bytes)
{
    return Io::SafeFileWriter::writeFile(
        path, [&](QIODevice& device) { return device.write(bytes) == bytes.size(); });
}

QByteArray PngBytes(const Emf::Picture& picture, QSize size)
{
    const QImage image = Emf::RenderPicture(picture, size);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return bytes;
}

QByteArray SvgBytes(const Emf::Picture& picture, QSize size)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QSvgGenerator generator;
    generator.setOutputDevice(&buffer);
    generator.setSize(size);
    generator.setViewBox(QRect(QPoint(0, 0), size));
    generator.setResolution(96);
    {
        QPainter painter(&generator);
        Emf::PlayPicture(picture, painter, QRectF(QPointF(0, 0), size));
    }
    return bytes;
}

QByteArray PdfBytes(const Emf::Picture& picture, QSize size)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    {
        QPdfWriter writer(&buffer);
        // One page the size of the picture, at the 96 dpi of the reference screen.
        writer.setResolution(96);
        writer.setPageSize(QPageSize(
            QSizeF(size.width() * 72.0 / 96.0, size.height() * 72.0 / 96.0), QPageSize::Point));
        writer.setPageMargins(QMarginsF(0, 0, 0, 0));
        QPainter painter(&writer);
        Emf::PlayPicture(picture, painter, QRectF(QPointF(0, 0), size));
    }
    return bytes;
}

} // namespace

QString ExportFilter()
{
    QString filter = GetResString(emfFilterText);
    for (const int text : pictureFilterTexts)
        filter += u'|' + GetResString(text);
    return filter;
}

QString ExportPictureFile(
    Graph& graph, const QString& path, int pngWidth, int pngScale, QStringView kindNamed)
{
    const QString kind
        = kindNamed.isEmpty() ? QFileInfo(path).suffix().toLower() : kindNamed.toString();
    if (kind != u"png"_s && kind != u"svg"_s && kind != u"pdf"_s)
        return graph.ExportGraph(path);
    const Emf::Picture* picture = graph.hMF();
    if (picture == nullptr)
        return u"The graph could not be drawn."_s;
    QSize size(std::max(graph.Width(), 1), std::max(graph.Height(), 1));
    if (kind == u"png"_s) {
        const int width = pngWidth > 0 ? pngWidth : std::max(pngScale, 1) * size.width();
        const double scale = double(width) / size.width();
        size = QSize(width, std::max(1, int(std::lround(size.height() * scale))));
        return WriteBytes(path, PngBytes(*picture, size));
    }
    if (kind == u"svg"_s)
        return WriteBytes(path, SvgBytes(*picture, size));
    return WriteBytes(path, PdfBytes(*picture, size));
}

} // namespace Ormsey
