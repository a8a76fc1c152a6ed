#include "cards/CardsCommand.h"

#include "cards/CardCompaction.h"
#include "cards/CardDatabase.h"
#include "cards/CardExport.h"
#include "cards/CardFields.h"
#include "cards/CardImport.h"
#include "platform/dao/DaoError.h"
#include "platform/io/SafeFileWriter.h"
#include "resources/StringTable.h"

#include <QIODevice>
#include <algorithm>
#include <optional>

using namespace Qt::Literals::StringLiterals;

namespace Bramlet {

namespace {

constexpr int StartingFields = 6;

const QString Usage = u"usage: quorbin-cli cards new FILE.qnd [--view 2|3|4] [--labels L1,L2,...]\n"
                      u"       quorbin-cli cards import FILE.qnd IN.csv\n"
                      u"       quorbin-cli cards export FILE.qnd OUT.csv [--view 2|3|4] "
                      u"[--where CONDITION] [--fields L1,L2,...]\n"
                      u"       quorbin-cli cards find FILE.qnd CONDITION\n"
                      u"       quorbin-cli cards info FILE.qnd\n"
                      u"       quorbin-cli cards compact FILE.qnd"_s;

int UsageFailure(QTextStream& err)
{
    err << Usage << Qt::endl;
    return CardsUsageError;
}

// The words after the verb, with --view and --where taken out.
struct Options
{
    QStringList words;
    std::optional<int> view;
    std::optional<QString> where;
    std::optional<QStringList> labels;
    std::optional<QStringList> fields; // the export's chosen items, by their texts
    bool valid = true;
};

Options ReadOptions(const QStringList& arguments)
{
    Options options;
    for (qsizetype i = 2; i < arguments.size(); ++i) {
        const QString& word = arguments[i];
        if (word == u"--view"_s || word == u"--where"_s || word == u"--labels"_s
            || word == u"--fields"_s) {
            if (i + 1 >= arguments.size()) {
                options.valid = false;
                break;
            }
            const QString value = arguments[++i];
            if (word == u"--where"_s) {
                options.where = value;
            } else if (word == u"--fields"_s) {
                QStringList fields = value.split(u',', Qt::SkipEmptyParts);
                for (QString& field : fields)
                    field = field.trimmed();
                options.fields = fields;
            } else if (word == u"--labels"_s) {
                QStringList labels = value.split(u',');
                for (QString& label : labels)
                    label = label.trimmed();
                options.valid = options.valid && labels.size() <= StartingFields;
                options.labels = labels;
            } else {
                bool number = false;
                const int view = value.toInt(&number);
                options.valid = options.valid && number && view >= 2 && view <= 4;
                options.view = view;
            }
        } else {
            options.words.append(word);
        }
    }
    return options;
}

// A new file's six starting text fields all read "Field Label"; a teacher naming them up
// front can import a class list straight away, since import matches columns by label.
void LabelStartingFields(Dao::DBEngine& engine, const QString& path, const QStringList& labels)
{
    CardDatabase cards(engine);
    cards.OpenCardDatabase(path);
    for (qsizetype index = 0; index < labels.size(); ++index) {
        if (labels[index].isEmpty())
            continue;
        const auto field = cards.MainTableDef()->Fields(u"Field"_s + QString::number(index + 1));
        if (field)
            SetFieldLabel(*field, labels[index]);
    }
}

// Applies a condition to the card set as the query builder's queries are applied.
void ApplyCondition(CardDatabase& cards, const std::optional<QString>& condition)
{
    if (condition)
        cards.AddQuery(u"quorbin-cli"_s, *condition, 0);
}

int Run(const QString& verb, const Options& options, QTextStream& out, QTextStream& err,
    Dao::DBEngine& engine)
{
    const QStringList& words = options.words;
    if (verb == u"new"_s && words.size() == 1 && !options.where) {
        CardDatabase(engine).CreateCardDatabase(words[0], options.view.value_or(3));
        if (options.labels)
            LabelStartingFields(engine, words[0], *options.labels);
        return 0;
    }
    if (options.labels || (options.fields && verb != u"export"_s))
        return UsageFailure(err);
    if (verb == u"import"_s && words.size() == 2 && !options.view && !options.where) {
        CardDatabase cards(engine);
        cards.OpenCardDatabase(words[0]);
        if (cards.ReadOnly())
            throw Dao::DaoError::make(Dao::DaoError::ReadOnly);
        out << ImportDelimitedFile(cards, words[1]) << u" cards imported"_s << Qt::endl;
        return 0;
    }
    if (verb == u"export"_s && words.size() == 2) {
        CardDatabase cards(engine);
        cards.OpenCardDatabase(words[0]);
        ApplyCondition(cards, options.where);
        std::vector<ExportItem> items = ExportItems(cards, options.view.value_or(cards.ViewType()));
        if (options.fields) {
            // The items named, in the list's own order, as the dialog's selection gives them.
            std::vector<ExportItem> chosen;
            for (const QString& wanted : *options.fields) {
                if (std::none_of(items.cbegin(), items.cend(), [&](const ExportItem& item) {
                        return item.Text.compare(wanted, Qt::CaseInsensitive) == 0;
                    })) {
                    err << u"quorbin-cli cards export: no item \""_s << wanted << u"\" to export"_s
                        << Qt::endl;
                    return CardsUsageError;
                }
            }
            for (const ExportItem& item : items) {
                if (options.fields->contains(item.Text, Qt::CaseInsensitive))
                    chosen.push_back(item);
            }
            items = std::move(chosen);
        }
        const QByteArray text = ExportCards(cards, items).toUtf8();
        const QString problem = Io::SafeFileWriter::writeFile(
            words[1], [&text](QIODevice& device) { return device.write(text) == text.size(); });
        if (!problem.isEmpty()) {
            err << problem << Qt::endl;
            return CardsCommandFailed;
        }
        return 0;
    }
    if (verb == u"find"_s && words.size() == 2 && !options.view && !options.where) {
        CardDatabase cards(engine);
        cards.OpenCardDatabase(words[0]);
        ApplyCondition(cards, words[1]);
        const auto& set = cards.MainTable();
        if (set->RecordCount() > 0) {
            for (set->MoveFirst(); !set->IsEOF(); set->MoveNext())
                out << set->Fields(u"CardName"_s)->Value().text() << Qt::endl;
        }
        return 0;
    }
    if (verb == u"info"_s && words.size() == 1 && !options.view && !options.where) {
        CardDatabase cards(engine);
        cards.OpenCardDatabase(words[0]);
        out << u"Version\t"_s << cards.Version() << Qt::endl;
        out << u"Cards\t"_s << cards.MainTable()->RecordCount() << Qt::endl;
        for (const auto& field : cards.MainTableDef()->Fields().items()) {
            out << field->Name() << u'\t' << FieldLabel(*field) << u'\t' << FieldType(*field)
                << Qt::endl;
        }
        return 0;
    }
    if (verb == u"compact"_s && words.size() == 1 && !options.view && !options.where) {
        const QString work = CompactionWorkFile();
        if (work.isEmpty()) {
            err << GetResString(455) << Qt::endl;
            return CardsCommandFailed;
        }
        CompactCardDatabase(engine, words[0], work);
        return 0;
    }
    return UsageFailure(err);
}

} // namespace

bool IsCardsCommand(const QStringList& arguments)
{
    return !arguments.isEmpty() && arguments.front() == u"cards"_s;
}

int RunCardsCommand(const QStringList& arguments, QTextStream& out, QTextStream& err)
{
    if (arguments.size() < 3 || !IsCardsCommand(arguments))
        return UsageFailure(err);
    const Options options = ReadOptions(arguments);
    if (!options.valid)
        return UsageFailure(err);
    Dao::DBEngine engine;
    try {
        return Run(arguments[1], options, out, err, engine);
    } catch (const Dao::DaoError& error) {
        err << u"Error %1: %2"_s.arg(error.number()).arg(error.description()) << Qt::endl;
        return CardsCommandFailed;
    }
}

} // namespace Bramlet
