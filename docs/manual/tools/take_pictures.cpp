#include "app/CFatalMessageGuard.h"
#include "app/CMainWindow.h"
#include "app/common/CMessageBox.h"
#include "app/common/Constants.h"
#include "app/common/Utilities.h"
#include "device/DeviceParams.h"
#include "simulator/device/CSimulatedDevice.h"
#include "simulator/transports/CSimulatedSystem.h"
#include "style/CJXStyle.h"
#include "style/COnlineMark.h"
#include "style/SplashTimes.h"
#include "widgets/CControlView.h"
#include "widgets/CKnobLED.h"
#include "widgets/CSlideEditor.h"
#include "widgets/KnobLEDStates.h"

#include <QAction>
#include <QApplication>
#include <QDeadlineTimer>
#include <QDir>
#include <QIcon>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QPainter>
#include <QPropertyAnimation>
#include <QSaveFile>
#include <QTimer>

#include <algorithm>
#include <array>
#include <cstdio>
#include <functional>
#include <vector>

/// Takes the manual's pictures from the editor itself, with a simulated device and without a display.
///
///     take_pictures FOLDER
///
/// FOLDER gets a PNG for each picture, of three pixels to a unit, and pictures.json: each picture's size in units,
/// where its callouts point, in their order, and which ring each LED type shows at which value.
///
/// Exit status 1, with a line on standard error, when the editor does not come up or something cannot be written.

namespace
{
struct Knob
{
    KnobSettings settings;
    int value;
};
// As somebody may have set the device up: a synthesizer on channel 1, a mixer on the others. All LED types occur.
constexpr std::array<Knob, k_numOfKnobs> k_knobs{{
    {{74, 0, 127, 0, k_ledAscent}, 80},
    {{71, 0, 96, 0, k_ledAscent}, 40},
    {{10, 1, 127, 0, k_ledConcave}, 100},
    {{7, 1, 112, 0, k_ledAscent}, 110},
    {{73, 2, 127, 0, k_ledDescend}, 20},
    {{10, 2, 127, 0, k_ledConcave}, 64},
    {{91, 0, 100, 20, k_ledConvex}, 70},
    {{7, 2, 127, 0, k_ledAscent}, 127},
}};
constexpr int k_pageShown = 1;  ///< whose fields are explained
constexpr int k_pageFramed = 2; ///< beside it

constexpr std::array k_ringValues{0, 20, 48, 64, 80, 108, 127};
constexpr std::array k_ledTypes{"ascent", "descend", "concave", "convex"};

constexpr QMargins k_pageMargins{5, 4, 6, 0}; ///< units, up to the lines between the pages
constexpr std::chrono::seconds k_patience{20};

/// The side of the picture on which the callout's number stands, level with what it points at.
enum class Side
{
    Left,
    Right,
    Top
};

struct Callout
{
    Side side;
    QPoint target; ///< units, within the picture
};

QString nameOf(Side side)
{
    switch (side) {
    case Side::Left:
        return QStringLiteral("left");
    case Side::Right:
        return QStringLiteral("right");
    case Side::Top:
        break;
    }
    return QStringLiteral("top");
}

/// Lets the program run until the condition holds. false: it never did.
bool waitUntil(const std::function<bool()>& condition)
{
    const QDeadlineTimer end(k_patience);
    while (!condition()) {
        if (end.hasExpired())
            return false;
        QApplication::processEvents(QEventLoop::WaitForMoreEvents | QEventLoop::AllEvents, 20);
    }
    return true;
}

/// The editor in front of a device, and the pictures taken of it.
class CPhotographer
{
  public:
    explicit CPhotographer(const QString& folder) : m_folder(folder) {}

    /// Starts the editor and waits until it shows what the device holds. false: it does not.
    [[nodiscard]] bool start()
    {
        for (std::size_t knob = 0; knob < k_knobs.size(); ++knob) {
            m_device.setSettings(static_cast<int>(knob), k_knobs[knob].settings);
            m_device.setValue(static_cast<int>(knob), k_knobs[knob].value);
        }
        CSimulatedSystem::instance().plug(m_device);
        m_window.initialize();
        m_window.show();
        m_window.activateWindow();
        m_views = m_window.findChildren<CControlView*>();
        const auto* mark = m_window.findChild<COnlineMark*>();
        return waitUntil(
                   [&] { return !m_window.isInitializing() && mark->getAlpha() < 255 && m_window.isEnabled(); }) &&
               waitUntil([&] { return showsEveryKnob(); }) && waitUntil([this] { return isAtRest(); });
    }

    void takeAll()
    {
        takeWindow();
        takePage();
        takeMarks();
        takeTypes();
        takeMenu();
        takeBox(QStringLiteral("lost"), k_connectionErrorMessage, QMessageBox::Warning, QMessageBox::Ok);
        takeBox(QStringLiteral("unsaved"), k_checkSave, QMessageBox::Question,
                QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
        takeRings();
    }

    /// false: something could not be written.
    [[nodiscard]] bool finish()
    {
        QSaveFile file(m_folder + QStringLiteral("/pictures.json"));
        const QByteArray text = QJsonDocument(m_about).toJson();
        return m_written && file.open(QIODevice::WriteOnly) && file.write(text) == text.size() && file.commit();
    }

  private:
    [[nodiscard]] bool showsEveryKnob() const
    {
        for (std::size_t knob = 0; knob < k_knobs.size(); ++knob) {
            const auto* ring = m_views[static_cast<qsizetype>(knob)]->findChild<CKnobLED*>();
            const int led = k_knobs[knob].settings.led;
            if (ring->getImageIndexByType(led) != knobLEDIndex(led, k_knobs[knob].value))
                return false;
        }
        return true;
    }

    [[nodiscard]] bool isAtRest() const
    {
        const auto animations = m_window.findChildren<QPropertyAnimation*>();
        return std::none_of(animations.begin(), animations.end(), [](const QPropertyAnimation* animation) {
            return animation->state() == QAbstractAnimation::Running;
        });
    }

    void keep(const QString& name, const QImage& picture, const std::vector<Callout>& callouts = {})
    {
        m_written = picture.save(m_folder + u'/' + name + QStringLiteral(".png")) && m_written;
        const QSizeF size = picture.deviceIndependentSize();
        QJsonArray points;
        for (const Callout& callout : callouts)
            points.append(QJsonArray{nameOf(callout.side), callout.target.x(), callout.target.y()});
        m_about.insert(name, QJsonObject{{QStringLiteral("size"), QJsonArray{size.width(), size.height()}},
                                         {QStringLiteral("callouts"), points}});
    }

    static QImage pictureOf(QWidget& widget, const QRect& part)
    {
        return widget.grab(part).toImage().convertToFormat(QImage::Format_RGB32);
    }

    void takeWindow()
    {
        const QRect menus = k_menuRect;
        const auto top = [this](const char* button) {
            const QRect place = m_window.findChild<QWidget*>(QString::fromLatin1(button))->geometry();
            return QPoint(place.center().x(), place.top() - 1);
        };
        const QRect mark = m_window.findChild<COnlineMark*>()->geometry();
        const QRect lastPage = m_views.last()->geometry();
        keep(QStringLiteral("window"), pictureOf(m_window, m_window.rect()),
             {{Side::Top, top("closeWindowBtn")},
              {Side::Top, top("minimizeWindowBtn")},
              {Side::Top, top("holdWindowInFrontBtn")},
              {Side::Top, QPoint(menus.center().x(), menus.top() - 4)},
              {Side::Right, mark.center()},
              {Side::Left, m_views.first()->geometry().topLeft() + QPoint(2, k_knobRect.center().y())},
              {Side::Right, QPoint(lastPage.right() - 6, lastPage.top() + k_knobRect.center().y())},
              {Side::Right, QPoint(m_window.width() - 12, m_window.height() - 28)}});
    }

    void takePage()
    {
        const CControlView& page = *m_views[k_pageShown];
        const QRect frame = page.geometry() + k_pageMargins;
        const auto inFrame = [&](const QPoint& onPage) { return onPage + page.pos() - frame.topLeft(); };
        std::vector<Callout> callouts{{Side::Right, inFrame(k_knobRect.center() + QPoint(30, 0))}};
        for (const QRect& field : {k_ledTypeRect, k_ccNumRect, k_midiChRect, k_maxRect, k_minRect})
            callouts.push_back({Side::Right, inFrame({field.right(), field.center().y()})});
        callouts.push_back({Side::Left, inFrame({k_midiChRect.left(), k_midiChRect.center().y()})});
        keep(QStringLiteral("page"), pictureOf(m_window, frame), callouts);
    }

    /// A whole knob that is selected, while the keys go elsewhere; a field to which they go.
    void takeMarks()
    {
        m_views[k_pageShown]->goTo();
        m_window.findChild<QWidget*>(QStringLiteral("closeWindowBtn"))->setFocus();
        const QMargins around(6, 6, 6, 6);
        const auto knob = [&](int page) { return k_knobRect.translated(m_views[page]->pos()) + around; };
        keep(QStringLiteral("corners"), pictureOf(m_window, knob(k_pageShown)));
        m_views[k_pageFramed]->goTo();
        keep(QStringLiteral("frame"), pictureOf(m_window, knob(k_pageFramed)));
    }

    void takeTypes()
    {
        for (std::size_t type = 0; type < k_ledTypes.size(); ++type) {
            for (std::size_t knob = 0; knob < k_knobs.size(); ++knob) {
                if (k_knobs[knob].settings.led == static_cast<int>(type))
                    keep(QString::fromLatin1(k_ledTypes[type]),
                         pictureOf(*m_views[static_cast<qsizetype>(knob)], k_ledTypeRect));
            }
        }
    }

    void takeMenu()
    {
        const auto entries = m_window.findChild<QMenuBar*>()->actions();
        QMenu& menu = *entries[1]->menu();
        menu.popup(m_window.pos() + QPoint(k_menuRect.left() + 30, k_menuRect.bottom()));
        menu.setActiveAction(menu.actions().constFirst());
        keep(QStringLiteral("menu"), pictureOf(menu, menu.rect()));
        menu.close();
    }

    void takeBox(const QString& name, const QString& text, QMessageBox::Icon icon, QMessageBox::StandardButtons buttons)
    {
        QTimer poll;
        QObject::connect(&poll, &QTimer::timeout, &poll, [&] {
            QWidget* box = QApplication::activeModalWidget();
            if (box == nullptr || !box->isVisible())
                return;
            poll.stop();
            keep(name, pictureOf(*box, box->rect()));
            box->close();
        });
        poll.start(5);
        CMessageBox::showMessageBox(&m_window, icon, QString(), text, buttons, QMessageBox::NoButton);
    }

    /// The states of the rings by themselves, and which of them is shown when.
    void takeRings()
    {
        const qreal ratio = qApp->devicePixelRatio();
        for (int index = 0; index < k_numOfLEDStates; ++index) {
            // On what lies under the ring in the window.
            QImage picture = pictureOf(*m_views.first(), k_ledRect);
            QPainter(&picture).drawImage(QPoint(0, 0), knobLEDImage(0, ratio));
            QPainter(&picture).drawImage(QPoint(0, 0), knobLEDImage(index, ratio));
            keep(QStringLiteral("ring-%1").arg(index), picture);
        }
        QJsonObject rings;
        for (std::size_t type = 0; type < k_ledTypes.size(); ++type) {
            QJsonObject byValue;
            for (const int value : k_ringValues)
                byValue.insert(QString::number(value), knobLEDIndex(static_cast<int>(type), value));
            rings.insert(QString::fromLatin1(k_ledTypes[type]), byValue);
        }
        m_about.insert(QStringLiteral("rings"), rings);
    }

    QString m_folder;
    bool m_written = true;
    QJsonObject m_about;
    CSimulatedDevice m_device;
    CMainWindow m_window{{},
                         SplashTimes{.tick = std::chrono::milliseconds(1),
                                     .fill = std::chrono::milliseconds(1),
                                     .minimumShow = std::chrono::milliseconds(1),
                                     .slide = std::chrono::milliseconds(1)}};
    QList<CControlView*> m_views;
};
} // namespace

int main(int argc, char** argv)
{
    // Nothing of the desktop on which the manual is made gets into it.
    qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" KTZ_SCREEN_FILE);
    qputenv("QT_QPA_PLATFORMTHEME", "none");
    qputenv("QT_SCALE_FACTOR", "3");
    qunsetenv("QT_STYLE_OVERRIDE");
    qInstallMessageHandler(doNotOutputMessage); // of what a platform without a screen cannot do
    QApplication application(argc, argv);
    if (argc != 2 || !QDir().mkpath(QString::fromLocal8Bit(argv[1]))) {
        std::fputs("usage: take_pictures FOLDER\n", stderr);
        return 1;
    }
    QApplication::setStyle(new CJXStyle); // the application owns it from here on
    Q_INIT_RESOURCE(common_images);
    if (!Utilities::registerSkinFonts()) {
        std::fputs("take_pictures: the fonts of the skin cannot be read\n", stderr);
        return 1;
    }
    QApplication::setFont(QFont(QStringLiteral("Liberation Sans"), 9));
    QApplication::setAttribute(Qt::AA_DontUseNativeMenuBar);
    QIcon::setThemeName(QStringLiteral("none"));

    CPhotographer photographer(QString::fromLocal8Bit(argv[1]));
    if (!photographer.start()) {
        std::fputs("take_pictures: the editor does not come up\n", stderr);
        return 1;
    }
    photographer.takeAll();
    if (photographer.finish())
        return 0;
    std::fprintf(stderr, "take_pictures: cannot write to %s\n", argv[1]);
    return 1;
}
