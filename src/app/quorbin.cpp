#include <QApplication>
#include <QMainWindow>

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Quorbin"));
    QApplication::setOrganizationName(QStringLiteral("Pellimore Soft"));
    QMainWindow window;
    window.setWindowTitle(QStringLiteral("Quorbin"));
    window.resize(1024, 720);
    window.show();
    return QApplication::exec();
}
