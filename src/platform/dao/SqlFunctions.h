#pragma once

struct sqlite3;

namespace Dao {

// Registers on a connection the functions the translated dialect calls: LIKE with the
// engine's patterns (* ? # [list], without regard to case), qb_convert (a value written into
// a column takes the column's type), and the engine's functions under qb_ names (DatePart,
// Year, Month, Day, Weekday, Hour, Minute, Second, Date, Time, Now, Left, Right, Mid, Len,
// InStr, UCase, LCase, Val, Int, Fix, Round, Nz, CStr, CLng, CInt, CDbl, CCur, CDate,
// CBool). Their failures reach the caller as "DAO<number>:<text>" messages, which the
// connection turns back into numbered errors.
void RegisterSqlFunctions(sqlite3* database);

} // namespace Dao
