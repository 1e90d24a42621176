#include <QApplication>
#include <QCursor>
#include <QMouseEvent>
#include <QSlider>
#include <QWidget>

#include <string_view>

namespace
{
/// Puts the pointer back after each movement, as the editor does so that no drag ends at the edge of the screen.
class CPlacingSlider : public QSlider
{
  public:
    using QSlider::QSlider;

  protected:
    void mousePressEvent(QMouseEvent* event) override
    {
        m_origin = event->globalPosition().toPoint();
    }

    void mouseMoveEvent(QMouseEvent* event) override
    {
        const int travel = event->globalPosition().toPoint().y() - m_origin.y();
        if (travel == 0)
            return;
        setValue(value() - travel);
        QCursor::setPos(m_origin);
    }

  private:
    QPoint m_origin;
};
} // namespace

/// A slider as Qt gives it, in a window of the editor's size: what a drag is held against. With --placing it puts the
/// pointer back, which is the least that the editor's drag takes.
int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QWidget window;
    window.resize(446, 680);
    const bool places = argc > 1 && std::string_view(argv[1]) == "--placing";
    QSlider* slider = places ? new CPlacingSlider(Qt::Vertical, &window) : new QSlider(Qt::Vertical, &window);
    slider->setGeometry(40, 60, 22, 300);
    slider->setRange(0, 127);
    slider->setValue(64);
    window.show();
    return QApplication::exec();
}
