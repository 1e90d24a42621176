#include "app/common/Constants.h"
#include "app/common/SkinPixmap.h"
#include "app/common/Utilities.h"

#include <QAbstractSlider>
#include <QApplication>
#include <QDBusConnection>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPainter>
#include <QPushButton>

#include <alsa/asoundlib.h>

/// What the editor's window is made of, without what the editor does with it: its two large pictures, its fonts, menus
/// and as many of Qt's own controls as the pages have, which draw nothing; the sequencer and the session bus opened. No
/// editor of this structure starts faster or is smaller.
namespace
{
constexpr int k_pages = 8;
constexpr int k_editorsOfPage = 5;
constexpr int k_valuesOfPage = 4; ///< the editors that text is typed into
constexpr int k_windowButtons = 4;

template <class Control> class CBlank : public Control
{
  public:
    using Control::Control;

  protected:
    void paintEvent(QPaintEvent*) override {}
};

class CPicture : public QWidget
{
  public:
    CPicture(QWidget* parent, const QString& path) : QWidget(parent), m_picture(largeSkinPixmap(path))
    {
        setGeometry(parent->rect());
    }

  protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        painter.drawPixmap(0, 0, m_picture);
        painter.setFont(font());
        painter.drawText(rect(), Qt::AlignCenter, QStringLiteral("Version 1.0"));
    }

  private:
    QPixmap m_picture;
};

void addPage(QWidget* window)
{
    auto* page = new QWidget(window);
    new CBlank<QWidget>(page); // the ring
    for (int i = 0; i < k_editorsOfPage; ++i) {
        auto* editor = new QWidget(page);
        auto* value = new CBlank<QAbstractSlider>(editor);
        new CBlank<QAbstractSlider>(editor); // up and down
        if (i >= k_valuesOfPage)
            continue;
        auto* text = new QLineEdit(value);
        text->setFont(QFont(k_fontGLT7Bold));
        text->setFrame(false);
        text->hide();
    }
}

void addMenus(QWidget* window)
{
    auto* bar = new QMenuBar(window);
    bar->setFont(QFont(k_fontGLT7Bold));
    bar->setGeometry(k_menuRect);
    for (const auto& items : {QStringList{k_openString, k_saveString, k_saveAsString},
                              QStringList{k_copyString, k_pasteString, k_revrtString, k_resetString},
                              QStringList{k_manualString, k_aboutString}}) {
        QMenu* menu = bar->addMenu(items.constFirst());
        for (const QString& item : items)
            menu->addAction(item);
    }
}
} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    static_cast<void>(QDBusConnection::sessionBus().isConnected());
    Q_INIT_RESOURCE(common_images);
    static_cast<void>(Utilities::registerSkinFonts());
    snd_seq_t* sequencer = nullptr;
    static_cast<void>(snd_seq_open(&sequencer, "default", SND_SEQ_OPEN_DUPLEX, SND_SEQ_NONBLOCK));

    QWidget window;
    window.resize(446, 680);
    CPicture ground(&window, QStringLiteral(":/images/ktz_back.png"));
    for (int i = 0; i < k_pages; ++i)
        addPage(&window);
    for (int i = 0; i < k_windowButtons; ++i)
        new CBlank<QPushButton>(&window);
    addMenus(&window);
    CPicture splash(&window, QStringLiteral(":images/ktz_jx_info_view.png"));
    splash.setFont(QFont(k_fontGLT7Bold));
    window.show();
    const int result = QApplication::exec();
    if (sequencer != nullptr)
        snd_seq_close(sequencer);
    return result;
}
