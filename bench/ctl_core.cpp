#include <QCoreApplication>

/// The least that a Qt program without a window does.
int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    return 0;
}
