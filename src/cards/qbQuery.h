#pragma once

#include <QString>

namespace Bramlet {

// One saved query of a card window: a condition on the card table (without the word
// WHERE), its name, whether it restricts the card set now, and the view it was built in
// (2, 3 or 4; 0 for queries read from the file). Only the name and the condition are kept
// in the file, as a query definition "SELECT * FROM Quorbin_Card WHERE " + condition.
struct qbQuery
{
    QString SQLQuery;
    QString QueryName;
    bool Applied = false;
    int QueryType = 0;
};

} // namespace Bramlet
