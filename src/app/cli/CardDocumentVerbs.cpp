#include "app/cli/CardDocumentVerbs.h"

#include "app/cli/VerbStatus.h"
#include "cards/CardDocument.h"
#include "frame/HeadlessPrompts.h"
#include "platform/dao/DBEngine.h"
#include "platform/dao/DaoError.h"
#include "platform/runtime/Dates.h"

#include <algorithm>
#include <optional>

using namespace Qt::Literals::StringLiterals;

namespace Cli {

namespace {

constexpr QStringView Syntax = u"cards add FILE.qnd NAME [LABEL=VALUE ...]\n"
                               u"       quorbin-cli cards show FILE.qnd NAME";

// The card window's messages, one line each on standard error, for the verbs that drive the
// card document; put back when the verb ends.
class CardMessages
{
public:
    explicit CardMessages(QTextStream& err)
        : m_prompts(err)
        , m_previous(Frame::InstallPrompts(&m_prompts))
    { }
    ~CardMessages() { Frame::InstallPrompts(m_previous); }
    CardMessages(const CardMessages&) = delete;
    CardMessages& operator=(const CardMessages&) = delete;

private:
    Frame::HeadlessPrompts m_prompts;
    Frame::Prompts* m_previous;
};

// An on/off field given as a word: 1, true, yes or on (any case) ticks it; 0, false, no, off
// or nothing clears it.
std::optional<bool> OnOffWord(const QString& value)
{
    static const QStringList on { u"1"_s, u"true"_s, u"yes"_s, u"on"_s, u"-1"_s };
    static const QStringList off { u"0"_s, u"false"_s, u"no"_s, u"off"_s, QString() };
    const QString word = value.trimmed().toLower();
    if (on.contains(word))
        return true;
    if (off.contains(word))
        return false;
    return std::nullopt;
}

// Adds one card exactly as typed into the card window and saved: the window's conversions,
// and its message when the save is refused (the file then stays as it was).
int addCard(const QStringList& words, QTextStream& err, Dao::DBEngine& engine)
{
    const CardMessages messages(err);
    Bramlet::CardDocument document(nullptr, &engine);
    if (!document.Open(words[0]))
        return Failed;
    if (document.ReadOnly())
        throw Dao::DaoError::make(Dao::DaoError::ReadOnly);
    document.AddCard();
    document.SetControlText(document.ControlOfKind(Bramlet::ControlKind::Name), words[1]);
    for (qsizetype index = 2; index < words.size(); ++index) {
        const qsizetype equals = words[index].indexOf(u'=');
        const QString label = words[index].left(equals);
        const QString value = words[index].mid(equals + 1);
        const int control = equals > 0 ? document.ControlWithLabel(label) : -1;
        if (control < 0) {
            err << u"quorbin-cli cards add: no field labelled \""_s << label << u"\""_s << Qt::endl;
            return UsageError;
        }
        const Bramlet::CardControl& field = document.Controls()[static_cast<size_t>(control)];
        if (field.Kind == Bramlet::ControlKind::CheckBox) {
            const std::optional<bool> checked = OnOffWord(value);
            if (!checked)
                return Failure(
                    err, u"quorbin-cli cards add: \""_s + value + u"\" is not on or off"_s);
            document.SetControlChecked(control, *checked);
        } else if (field.Kind == Bramlet::ControlKind::DatePicker) {
            if (!value.trimmed().isEmpty() && !Runtime::IsDate(value))
                return Failure(err, u"quorbin-cli cards add: \""_s + value + u"\" is not a date"_s);
            document.SetControlDate(control, value.trimmed().isEmpty(),
                value.trimmed().isEmpty() ? 0.0 : Runtime::CDate(value));
        } else {
            document.SetControlText(control, value);
        }
    }
    return document.SaveCard() ? Succeeded : Failed;
}

// The card as the Sprondle view shows it, one line per field.
int showCard(const QStringList& words, QTextStream& out, QTextStream& err, Dao::DBEngine& engine)
{
    const CardMessages messages(err);
    Bramlet::CardDocument document(nullptr, &engine);
    if (!document.Open(words[0]))
        return Failed;
    if (!document.ShowCardNamed(words[1]))
        return Failure(err, u"quorbin-cli cards show: no card named \""_s + words[1] + u"\""_s);
    for (const QString& line : document.CardLines())
        out << line << Qt::endl;
    return Succeeded;
}

} // namespace

bool IsCardDocumentVerb(const QStringList& arguments)
{
    return arguments.size() >= 2 && arguments[0] == u"cards"_s
        && (arguments[1] == u"add"_s || arguments[1] == u"show"_s);
}

int RunCardDocumentVerb(const QStringList& arguments, QTextStream& out, QTextStream& err)
{
    const QStringList words = arguments.mid(2);
    const bool add = arguments.value(1) == u"add"_s;
    const bool anOption = std::any_of(
        words.cbegin(), words.cend(), [](const QString& word) { return word.startsWith(u"--"_s); });
    if (!IsCardDocumentVerb(arguments) || anOption || words.size() < 2
        || (!add && words.size() != 2))
        return Usage(err, Syntax);
    Dao::DBEngine engine;
    try {
        return add ? addCard(words, err, engine) : showCard(words, out, err, engine);
    } catch (const Dao::DaoError& error) {
        return Failure(err, u"Error %1: %2"_s.arg(error.number()).arg(error.description()));
    }
}

} // namespace Cli
