#include "cards/CardImportRows.h"

#include "cards/CardDatabase.h"
#include "platform/dao/DaoError.h"
#include "platform/text/DelimitedFile.h"
#include "platform/text/DelimitedText.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace Bramlet {

CardImportResult ImportCardRows(CardDatabase& cards, const QString& path)
{
    Text::DelimitedFile file;
    file.setSeparator(Text::SeparatorForFile(path));
    file.setFirstRowIsLabels(true);
    if (!file.OpenFile(path))
        throw Dao::DaoError::make(Dao::DaoError::FileNotFound, path);
    std::vector<std::shared_ptr<Dao::Field>> targets;
    for (int column = 0; column < file.NumberOfFields(); ++column) {
        const QString heading = file.FieldLabel(column).trimmed();
        targets.push_back(
            column == 0 || heading.isEmpty() ? nullptr : cards.FieldWithLabel(heading));
    }

    CardImportResult result;
    const auto& set = cards.MainTable();
    const auto& workspace = cards.Workspace();
    // One transaction: a class list of hundreds of rows is one write to the disk.
    workspace->BeginTrans();
    try {
        QStringList values;
        int line = 1;
        while (file.GetRecords(values)) {
            ++line;
            if (std::all_of(values.cbegin(), values.cend(),
                    [](const QString& value) { return value.trimmed().isEmpty(); }))
                continue;
            try {
                set->AddNew();
                set->Fields(u"CardName"_s)->SetValue(values.value(0).trimmed());
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
                if (error.number() == Dao::DaoError::DuplicateValue) {
                    ++result.DuplicateNames;
                } else if (++result.OtherRefused == 1) {
                    result.FirstRefusal
                        = u"Line %1 of %2: %3"_s.arg(line).arg(path, error.description());
                }
            }
        }
    } catch (...) {
        workspace->Rollback();
        cards.OpenMainRecordSet();
        throw;
    }
    workspace->CommitTrans();
    file.CloseFile();
    cards.OpenMainRecordSet();
    return result;
}

} // namespace Bramlet
