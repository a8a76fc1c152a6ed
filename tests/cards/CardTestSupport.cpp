#include "CardTestSupport.h"

using namespace Qt::Literals::StringLiterals;

namespace CardTest {

void AddCard(Bramlet::CardDatabase& cards, const QString& name,
    const QList<std::pair<QString, Runtime::Variant>>& values)
{
    const auto& set = cards.MainTable();
    set->AddNew();
    set->Fields(u"CardName"_s)->SetValue(name);
    for (const auto& [column, value] : values)
        set->Fields(column)->SetValue(value);
    set->Update();
}

QStringList CardNames(Bramlet::CardDatabase& cards)
{
    QStringList names;
    const auto& set = cards.MainTable();
    if (set->RecordCount() == 0)
        return names;
    for (set->MoveFirst(); !set->IsEOF(); set->MoveNext())
        names.append(set->Fields(u"CardName"_s)->Value().text());
    return names;
}

} // namespace CardTest
