#include "platform/emf/FitPicture.h"

#include "RowFile.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

class FitPictureTest : public RowFile::RowTest<>
{
};

TEST_P(FitPictureTest, KeepsTheProportionsInsideTheBox)
{
    // The numbers of a field, blank-separated.
    const auto numbers = [&](const char* column, qsizetype count) {
        QList<double> numbers;
        for (const QString& number : row().list(column, u" "_s))
            numbers.append(number.toDouble());
        EXPECT_EQ(numbers.size(), count) << column;
        numbers.resize(4);
        return numbers;
    };
    const QList<double> picture = numbers("picture", 2);
    const QList<double> box = numbers("box", 4);
    const QList<double> drawn = numbers("drawn", 4);
    const QString alignment = row().text("alignment");
    const Qt::Alignment where = alignment == u"centre" ? Qt::Alignment(Qt::AlignCenter)
        : alignment == u"top left"                     ? Qt::AlignTop | Qt::AlignLeft
                                                       : Qt::AlignBottom | Qt::AlignRight;
    EXPECT_EQ(Emf::FitPicture(QSizeF(picture[0], picture[1]),
                  QRectF(box[0], box[1], box[2], box[3]), where, row().flag("mayEnlarge")),
        QRectF(drawn[0], drawn[1], drawn[2], drawn[3]));
}

INSTANTIATE_TEST_SUITE_P(
    Rows, FitPictureTest, RowFile::In("platform/emf/fitPicture.rows"), RowFile::Named());

} // namespace
