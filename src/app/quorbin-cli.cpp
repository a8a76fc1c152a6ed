#include <QCoreApplication>
#include <cstdio>

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    std::fputs("usage: quorbin-cli --help\n", stderr);
    return 2;
}
