#include "app/cli/CardVerbs.h"

#include "app/cli/VerbStatus.h"
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

namespace Cli {

namespace {

constexpr QStringView Syntax = u"cards new FILE.qnd [--view 2|3|4] [--labels L1,L2,...]\n"
                               u"       quorbin-cli cards import FILE.qnd IN.csv\n"
                               u"       quorbin-cli cards add FILE.qnd NAME [LABEL=VALUE ...]\n"
                               u"       quorbin-cli cards show FILE.qnd NAME\n"
                               u"       quorbin-cli cards export FILE.qnd OUT.csv [--view 2|3|4] "
                               u"[--where CONDITION] [--fields L1,L2,...]\n"
                               u"       quorbin-cli cards find FILE.qnd CONDITION\n"
                               u"       quorbin-cli cards info FILE.qnd\n"
                               u"       quorbin-cli cards compact FILE.qnd";

// The words after the verb, with the options taken out.
struct Options
{
    QStringList words;
    std::optional<int> view;
    std::optional<QString> where;
    std::optional<QStringList> labels;
    std::optional<QStringList> fields; // the export's chosen items, by their texts
    bool valid = true;
};

QStringList trimmedList(const QString& value, Qt::SplitBehavior behaviour)
{
    QStringList items = value.split(u',', behaviour);
    for (QString& item : items)
        item = item.trimmed();
    return items;
}

Options readOptions(const QStringList& arguments)
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
                options.fields = trimmedList(value, Qt::SkipEmptyParts);
            } else if (word == u"--labels"_s) {
                options.labels = trimmedList(value, Qt::KeepEmptyParts);
                options.valid
                    = options.valid && options.labels->size() <= Bramlet::StartingFieldCount;
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

// Applies a condition to the card set as the query builder's queries are applied.
void applyCondition(Bramlet::CardDatabase& cards, const std::optional<QString>& condition)
{
    if (condition)
        cards.AddQuery(u"quorbin-cli"_s, *condition, 0);
}

int exportCards(const Options& options, QTextStream& err, Dao::DBEngine& engine)
{
    Bramlet::CardDatabase cards(engine);
    cards.OpenCardDatabase(options.words[0]);
    applyCondition(cards, options.where);
    std::vector<Bramlet::ExportItem> items
        = Bramlet::ExportItems(cards, options.view.value_or(cards.ViewType()));
    if (options.fields) {
        const auto named = [&items](const QString& wanted) {
            return std::any_of(items.cbegin(), items.cend(), [&](const Bramlet::ExportItem& item) {
                return item.Text.compare(wanted, Qt::CaseInsensitive) == 0;
            });
        };
        for (const QString& wanted : *options.fields) {
            if (!named(wanted)) {
                err << u"quorbin-cli cards export: no item \""_s << wanted << u"\" to export"_s
                    << Qt::endl;
                return UsageError;
            }
        }
        // The items named, in the list's own order, as the dialog's selection gives them.
        std::erase_if(items, [&](const Bramlet::ExportItem& item) {
            return !options.fields->contains(item.Text, Qt::CaseInsensitive);
        });
    }
    const QByteArray text = Bramlet::ExportCards(cards, items).toUtf8();
    const QString problem = Io::SafeFileWriter::writeFile(
        options.words[1], [&text](QIODevice& device) { return device.write(text) == text.size(); });
    return problem.isEmpty() ? Succeeded : Failure(err, problem);
}

int run(const QString& verb, const Options& options, QTextStream& out, QTextStream& err,
    Dao::DBEngine& engine)
{
    const QStringList& words = options.words;
    if (verb == u"new"_s && words.size() == 1 && !options.where) {
        Bramlet::CardDatabase(engine).CreateCardDatabase(words[0], options.view.value_or(3));
        if (options.labels) {
            Bramlet::CardDatabase cards(engine);
            cards.OpenCardDatabase(words[0]);
            Bramlet::LabelStartingFields(cards, *options.labels);
        }
        return Succeeded;
    }
    if (options.labels || (options.fields && verb != u"export"_s))
        return Usage(err, Syntax);
    if (verb == u"export"_s && words.size() == 2)
        return exportCards(options, err, engine);
    if (options.view || options.where)
        return Usage(err, Syntax);
    if (verb == u"import"_s && words.size() == 2) {
        Bramlet::CardDatabase cards(engine);
        cards.OpenCardDatabase(words[0]);
        if (cards.ReadOnly())
            throw Dao::DaoError::make(Dao::DaoError::ReadOnly);
        out << Bramlet::ImportDelimitedFile(cards, words[1]) << u" cards imported"_s << Qt::endl;
        return Succeeded;
    }
    if (verb == u"find"_s && words.size() == 2) {
        Bramlet::CardDatabase cards(engine);
        cards.OpenCardDatabase(words[0]);
        applyCondition(cards, words[1]);
        const auto& set = cards.MainTable();
        if (set->RecordCount() > 0) {
            for (set->MoveFirst(); !set->IsEOF(); set->MoveNext())
                out << set->Fields(u"CardName"_s)->Value().text() << Qt::endl;
        }
        return Succeeded;
    }
    if (verb == u"info"_s && words.size() == 1) {
        Bramlet::CardDatabase cards(engine);
        cards.OpenCardDatabase(words[0]);
        out << u"Version\t"_s << cards.Version() << Qt::endl;
        out << u"Cards\t"_s << cards.MainTable()->RecordCount() << Qt::endl;
        for (const auto& field : cards.MainTableDef()->Fields().items()) {
            out << field->Name() << u'\t' << Bramlet::FieldLabel(*field) << u'\t'
                << Bramlet::FieldType(*field) << Qt::endl;
        }
        return Succeeded;
    }
    if (verb == u"compact"_s && words.size() == 1) {
        const QString work = Bramlet::CompactionWorkFile();
        if (work.isEmpty())
            return Failure(err, GetResString(455));
        Bramlet::CompactCardDatabase(engine, words[0], work);
        return Succeeded;
    }
    return Usage(err, Syntax);
}

} // namespace

bool IsCardVerb(const QStringList& arguments)
{
    return !arguments.isEmpty() && arguments.front() == u"cards"_s;
}

int RunCardVerb(const QStringList& arguments, QTextStream& out, QTextStream& err)
{
    if (arguments.size() < 3 || !IsCardVerb(arguments))
        return Usage(err, Syntax);
    const Options options = readOptions(arguments);
    if (!options.valid)
        return Usage(err, Syntax);
    Dao::DBEngine engine;
    try {
        return run(arguments[1], options, out, err, engine);
    } catch (const Dao::DaoError& error) {
        return Failure(err, u"Error %1: %2"_s.arg(error.number()).arg(error.description()));
    }
}

} // namespace Cli
