#pragma once

#include <QByteArrayView>
#include <QString>
#include <QStringList>

namespace Ormsey {

class Graph;

// Fills `graph` from comma-separated text as spreadsheets write it (quoted fields may hold
// commas, doubled quotes and line breaks; "-" reads standard input): the first column holds
// the categories or x values, up to four further columns the series (more are left out);
// a first row whose series cells are not all numbers is the heading row (the horizontal axis
// label, then the series labels). Rows past 256 are left out; lines with no text are no rows.
// The number of series is the widest row's, less the first column, at least 1.
//
// The graph is expected fresh (new or initialised): cells the text does not reach keep what
// they held. Returns the empty string on success, else the message for the user ("Cannot
// read ...", "... holds no rows."), and then the graph is unchanged. What was left out is
// added to `leftOut`, one sentence each, when given.
QString ImportGraphCsv(Graph& graph, const QString& path, QStringList* leftOut = nullptr);

// The same from the file's bytes; `name` stands for the file in the messages.
QString ImportGraphCsvBytes(
    Graph& graph, QByteArrayView bytes, const QString& name, QStringList* leftOut = nullptr);

} // namespace Ormsey
