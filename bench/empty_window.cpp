#include <QApplication>
#include <QWidget>

/// The least that a Qt program with a window of the editor's size does: what start-up, memory and idling are held
/// against.
int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QWidget window;
    window.resize(446, 680);
    window.show();
    return QApplication::exec();
}
