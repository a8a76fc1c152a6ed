#include "cards/CardNavigation.h"

#include "platform/dao/DaoError.h"
#include "platform/dao/Recordset.h"

using namespace Qt::Literals::StringLiterals;

namespace Bramlet {

void StartNewCard(Dao::Recordset& set)
{
    try {
        set.AddNew();
    } catch (const Dao::DaoError&) {
        // A set that takes no new rows shows no new card.
    }
}

void ReloadCard(Dao::Recordset& set)
{
    try {
        if (set.EditMode() != Dao::EditMode::None)
            set.CancelUpdate();
        if (set.AbsolutePosition() >= 0)
            set.Move(0); // reads the stored card again
    } catch (const Dao::DaoError&) {
        // Still out of reach: the card shows what was read last.
    }
}

void MoveCardSet(Dao::Recordset& set, int action, bool mayAdd)
{
    try {
        switch (action) {
        case FirstCard:
            set.MoveFirst();
            break;
        case PreviousCard:
            set.MovePrevious();
            if (set.IsBOF())
                set.MoveFirst();
            break;
        case NextCard:
            if (!set.IsEOF())
                set.MoveNext();
            if (set.IsEOF()) {
                if (mayAdd)
                    StartNewCard(set);
                // Where no new card may be started the last card stays on show.
                if (set.EditMode() != Dao::EditMode::Add)
                    set.MoveLast();
            }
            break;
        case LastCard:
            set.MoveLast();
            break;
        default:
            break;
        }
    } catch (const Dao::DaoError&) {
        // No card to move to.
    }
}

QString CardNumberText(int position)
{
    return position < 0 ? u"--"_s : QString::number(position + 1);
}

QString CardCountText(int count)
{
    return u"/"_s + QString::number(count);
}

std::optional<int> CardNumberFrom(const QString& text, int count)
{
    bool number = false;
    const int wanted = text.trimmed().toInt(&number);
    if (!number || wanted < 1 || wanted > count)
        return std::nullopt;
    return wanted;
}

bool FindCardNamed(Dao::Recordset& set, const QString& name)
{
    QString quoted = name;
    quoted.replace(u'\'', u"''"_s);
    set.MoveFirst();
    set.FindFirst(u"[CardName] = '"_s + quoted + u"'"_s);
    return !set.NoMatch();
}

} // namespace Bramlet
