#include "cards/CardExport.h"

#include "cards/CardDatabase.h"
#include "platform/runtime/Format.h"
#include "resources/StringTable.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace Bramlet {

namespace {

void AppendQuoted(QString& text, const QString& cell)
{
    text += u'"';
    text += cell;
    text += u'"';
}

} // namespace

std::vector<ExportItem> ExportItems(CardDatabase& cards, int view)
{
    if (view == 2 || view == 3)
        return { ExportItem { GetResString(view == 2 ? 959 : 960), nullptr } };
    std::vector<ExportItem> items;
    for (const auto& field : cards.MainTable()->Fields().items()) {
        if (field->Name().startsWith(u"Field"_s, Qt::CaseInsensitive))
            items.push_back(ExportItem { FieldLabel(*field), field });
    }
    return items;
}

QString ExportCards(CardDatabase& cards, const std::vector<ExportItem>& chosen)
{
    const auto& set = cards.MainTable();
    QString text;
    AppendQuoted(text, GetResString(984));
    for (const ExportItem& item : chosen) {
        text += u',';
        AppendQuoted(text, item.Text);
    }
    if (set->RecordCount() == 0)
        return text;
    if (set->IsBOF() || set->IsEOF())
        set->MoveFirst();
    const QByteArray current = set->Bookmark();
    std::vector<QString> formats;
    for (const ExportItem& item : chosen)
        formats.push_back(item.Field ? FieldFormat(*item.Field) : QString());
    std::vector<std::shared_ptr<Dao::Field>> keywords;
    if (std::any_of(
            chosen.cbegin(), chosen.cend(), [](const ExportItem& item) { return !item.Field; })) {
        for (int slot = 1; slot <= 6; ++slot)
            keywords.push_back(set->Fields(u"Keyword"_s + QString::number(slot)));
    }
    const auto name = set->Fields(u"CardName"_s);
    for (set->MoveFirst(); !set->IsEOF(); set->MoveNext()) {
        text += u"\r\n"_s;
        AppendQuoted(text, name->Value().text());
        for (size_t i = 0; i < chosen.size(); ++i) {
            if (chosen[i].Field) {
                text += u',';
                AppendQuoted(text, Runtime::Format(chosen[i].Field->Value(), formats[i]));
                continue;
            }
            for (const auto& keyword : keywords) {
                text += u',';
                AppendQuoted(text, cards.KeywordText(keyword->Value()));
            }
        }
    }
    set->SetBookmark(current);
    return text;
}

QString ExportCards(CardDatabase& cards, int view)
{
    return ExportCards(cards, ExportItems(cards, view));
}

} // namespace Bramlet
