#include "cards/CardExport.h"

#include "cards/CardDatabase.h"
#include "platform/runtime/Format.h"
#include "resources/StringTable.h"

using namespace Qt::Literals::StringLiterals;

namespace Bramlet {

namespace {

QString Quoted(const QString& text)
{
    return u'"' + text + u'"';
}

} // namespace

QString ExportCards(CardDatabase& cards, int view)
{
    const auto& set = cards.MainTable();
    const bool keywords = view == 2 || view == 3;
    std::vector<std::shared_ptr<Dao::Field>> fields;
    QString text = Quoted(GetResString(984));
    if (keywords) {
        text += u","_s + Quoted(GetResString(view == 2 ? 959 : 960));
    } else {
        for (const auto& field : set->Fields().items()) {
            if (field->Name().startsWith(u"Field"_s, Qt::CaseInsensitive)) {
                fields.push_back(field);
                text += u","_s + Quoted(FieldLabel(*field));
            }
        }
    }
    if (set->RecordCount() == 0)
        return text;
    if (set->IsBOF() || set->IsEOF())
        set->MoveFirst();
    const QByteArray current = set->Bookmark();
    std::vector<QString> formats;
    for (const auto& field : fields)
        formats.push_back(FieldFormat(*field));
    for (set->MoveFirst(); !set->IsEOF(); set->MoveNext()) {
        text += u"\r\n"_s + Quoted(set->Fields(u"CardName"_s)->Value().text());
        if (keywords) {
            for (int slot = 1; slot <= 6; ++slot) {
                text += u","_s
                    + Quoted(cards.KeywordText(
                        set->Fields(u"Keyword"_s + QString::number(slot))->Value()));
            }
        } else {
            for (size_t i = 0; i < fields.size(); ++i)
                text += u","_s + Quoted(Runtime::Format(fields[i]->Value(), formats[i]));
        }
    }
    set->SetBookmark(current);
    return text;
}

} // namespace Bramlet
