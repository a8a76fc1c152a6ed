// Any bytes as a private profile file: the reader must neither crash nor read out of bounds,
// and what it hands back must keep the classic reader's limits.
#include "platform/profile/ProfileFile.h"
#include "platform/profile/TextDecoding.h"

#include <QString>
#include <cstdint>
#include <cstdlib>

using namespace Qt::Literals::StringLiterals;

namespace {

void CheckValue(const Profile::ProfileFile& profile, QStringView section, QStringView key)
{
    const QString value = profile.value(section, key);
    if (value.size() > Profile::MaximumValueLength)
        std::abort();
    if (value.contains(u'\n') || value.contains(u'\r') || value.contains(QChar(0)))
        std::abort();
    if (!value.isEmpty() && !profile.contains(section, key))
        std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArrayView bytes(reinterpret_cast<const char*>(data), qsizetype(size));
    const Profile::ProfileFile profile = Profile::ProfileFile::fromBytes(bytes);

    CheckValue(profile, u"Quorbin Colours", u"Number");
    CheckValue(profile, u"Quorbin Colours", u"ColourName1");
    CheckValue(profile, u"Ormsey Data File", u"Title");
    CheckValue(profile, u"s", u"k");

    // Names taken from the input itself reach sections and keys the fixed ones miss.
    const QString text
        = Profile::DecodeSystemText(bytes.first(std::min<qsizetype>(bytes.size(), 32)));
    const QList<QStringView> words = QStringView(text).split(u'\n');
    if (words.size() >= 2)
        CheckValue(profile, words[0], words[1]);
    return 0;
}
