#include "graph/ui/PictureExport.h"

#include "graph/Graph.h"
#include "platform/emf/Player.h"
#include "platform/io/SafeFileWriter.h"
#include "resources/StringTable.h"

#include <QBuffer>
#include <QFileInfo>
#include <QImage>
#include <QPainter>
#include <QPdfWriter>
#include <QSvgGenerator>

using namespace Qt::Literals::StringLiterals;

namespace Ormsey {

namespace {

constexpr int emfFilterText = 581;
constexpr int pngScale = 2;

QString WriteBytes(const QString& path, const QByteArray& bytes)
{
    return Io::SafeFileWriter::writeFile(
        path, [&](QIODevice& device) { return device.write(bytes) == bytes.size(); });
}

QByteArray PngBytes(const Emf::Picture& picture, QSize size)
{
    const QImage image = Emf::RenderPicture(picture, size * pngScale);
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
        // One page the size of the picture at the reference screen's 96 dpi.
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
    return GetResString(emfFilterText)
        + u"|PNG Pictures (*.png)|*.png|SVG Drawings (*.svg)|*.svg|PDF Documents (*.pdf)|*.pdf"_s;
}

QString ExportPictureFile(Graph& graph, const QString& path)
{
    const QString kind = QFileInfo(path).suffix().toLower();
    if (kind != u"png"_s && kind != u"svg"_s && kind != u"pdf"_s)
        return graph.ExportGraph(path);
    const Emf::Picture* picture = graph.hMF();
    if (picture == nullptr)
        return u"The graph has no picture."_s;
    const QSize size(graph.Width(), graph.Height());
    if (kind == u"png"_s)
        return WriteBytes(path, PngBytes(*picture, size));
    if (kind == u"svg"_s)
        return WriteBytes(path, SvgBytes(*picture, size));
    return WriteBytes(path, PdfBytes(*picture, size));
}

} // namespace Ormsey
