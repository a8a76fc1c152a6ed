// Another copy of the program, for the tests of sharing a file between processes:
//   dao_other_copy FILE shared|exclusive|hold
// opens FILE (hold: shared, then keeps it open until a line arrives on standard input) and
// prints the engine's number for the open: 0 when it opened.
#include "platform/dao/DBEngine.h"
#include "platform/dao/DaoError.h"

#include <QCoreApplication>
#include <iostream>
#include <string>

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    const QStringList arguments = application.arguments();
    if (arguments.size() != 3)
        return 2;
    const QString mode = arguments[2];
    Dao::DBEngine engine;
    engine.SetBusyTimeout(50);
    int number = 0;
    std::shared_ptr<Dao::Database> database;
    try {
        database = engine.DefaultWorkspace()->OpenDatabase(
            arguments[1], mode == QStringLiteral("exclusive"));
    } catch (const Dao::DaoError& error) {
        number = error.number();
    }
    std::cout << number << std::endl;
    if (mode == QStringLiteral("hold")) {
        std::string line;
        std::getline(std::cin, line);
    }
    return 0;
}
