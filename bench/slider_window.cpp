#include <QApplication>
#include <QSlider>
#include <QWidget>

/// A slider as Qt gives it, in a window of the editor's size: what a drag is held against.
int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QWidget window;
    window.resize(446, 680);
    QSlider slider(Qt::Vertical, &window);
    slider.setGeometry(40, 60, 22, 300);
    slider.setRange(0, 127);
    slider.setValue(64);
    window.show();
    return QApplication::exec();
}
