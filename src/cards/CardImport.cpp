#include "cards/CardImport.h"

#include "cards/CardDatabase.h"
#include "platform/dao/DaoError.h"
#include "platform/text/DelimitedFile.h"
#include "platform/text/DelimitedText.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace Bramlet {

CardImportResult ImportCardRows(CardDatabase& cards, const QString& path, ImportRefusals refusals)
{
    Text::DelimitedFile file;
    file.setSeparator(Text::SeparatorForFile(path));
    file.setFirstRowIsLabels(true);
    if (!file.OpenFile(path))
        throw Dao::DaoError::make(Dao::DaoError::FileNotFound, path);
    // The columns' fields are found once, by heading, before any card is added.
    std::vector<std::shared_ptr<Dao::Field>> targets;
    for (int column = 0; column < file.NumberOfFields(); ++column) {
        const QString heading = file.FieldLabel(column).trimmed();
        targets.push_back(
            column == 0 || heading.isEmpty() ? nullptr : cards.FieldWithLabel(heading));
    }
    const auto& set = cards.MainTable();
    const auto name = set->Fields(u"CardName"_s);
    const auto& workspace = cards.Workspace();
    // One transaction: a class list of hundreds of rows is one write to the disk.
    workspace->BeginTrans();
    CardImportResult result;
    int line = 1;
    try {
        QStringList values;
        while (file.GetRecords(values)) {
            ++line;
            // A blank line (often the last of a file saved by a spreadsheet) is no card.
            if (std::all_of(values.cbegin(), values.cend(),
                    [](const QString& value) { return value.trimmed().isEmpty(); }))
                continue;
            try {
                set->AddNew();
                name->SetValue(values.value(0).trimmed());
                for (qsizetype column = 1; column < values.size(); ++column) {
                    const auto target = static_cast<size_t>(column) < targets.size()
                        ? targets[static_cast<size_t>(column)]
                        : nullptr;
                    if (target && !values[column].isEmpty())
                        target->SetValue(values[column]);
                }
                set->Update();
                ++result.Added;
            } catch (const Dao::DaoError& error) {
                if (set->EditMode() != Dao::EditMode::None)
                    set->CancelUpdate();
                if (refusals == ImportRefusals::StopAll)
                    throw;
                if (error.number() == Dao::DaoError::DuplicateValue)
                    ++result.DuplicateNames;
                else if (++result.OtherRefused == 1)
                    result.FirstRefusal
                        = u"Line %1 of %2: %3"_s.arg(line).arg(path, error.description());
            }
        }
    } catch (const Dao::DaoError& error) {
        workspace->Rollback();
        file.CloseFile();
        cards.OpenMainRecordSet();
        throw Dao::DaoError(
            error.number(), u"Line %1 of %2: %3"_s.arg(line).arg(path, error.description()));
    } catch (...) {
        workspace->Rollback();
        file.CloseFile();
        cards.OpenMainRecordSet();
        throw;
    }
    workspace->CommitTrans();
    file.CloseFile();
    cards.OpenMainRecordSet();
    return result;
}

int ImportDelimitedFile(CardDatabase& cards, const QString& path)
{
    return ImportCardRows(cards, path, ImportRefusals::StopAll).Added;
}

} // namespace Bramlet
