#pragma once

#include <QProxyStyle>
#include <QStringList>

/// A whole style that notes the name of each operation asked of it, and passes everything on to "Fusion".
class CRecordingStyle : public QProxyStyle
{
    Q_OBJECT

  public:
    CRecordingStyle() : QProxyStyle(QStringLiteral("Fusion")) {}

    QStringList& calls() const
    {
        return m_calls;
    }

    using QProxyStyle::polish;
    using QProxyStyle::unpolish;
    void polish(QWidget* widget) override
    {
        note("polish(QWidget*)"), QProxyStyle::polish(widget);
    }
    void unpolish(QWidget* widget) override
    {
        note("unpolish(QWidget*)"), QProxyStyle::unpolish(widget);
    }
    void polish(QApplication* a) override
    {
        note("polish(QApplication*)"), QProxyStyle::polish(a);
    }
    void unpolish(QApplication* a) override
    {
        note("unpolish(QApplication*)"), QProxyStyle::unpolish(a);
    }
    void polish(QPalette& palette) override
    {
        note("polish(QPalette&)"), QProxyStyle::polish(palette);
    }

    QPalette standardPalette() const override
    {
        note("standardPalette");
        return QProxyStyle::standardPalette();
    }

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget = nullptr) const override
    {
        note("drawPrimitive");
        QProxyStyle::drawPrimitive(element, option, painter, widget);
    }

    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget = nullptr) const override
    {
        note("drawControl");
        QProxyStyle::drawControl(element, option, painter, widget);
    }

    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                            const QWidget* widget = nullptr) const override
    {
        note("drawComplexControl");
        QProxyStyle::drawComplexControl(control, option, painter, widget);
    }

    QRect subElementRect(SubElement element, const QStyleOption* option, const QWidget* widget) const override
    {
        note("subElementRect");
        return QProxyStyle::subElementRect(element, option, widget);
    }

    QRect subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl part,
                         const QWidget* widget) const override
    {
        note("subControlRect");
        return QProxyStyle::subControlRect(control, option, part, widget);
    }

    SubControl hitTestComplexControl(ComplexControl control, const QStyleOptionComplex* option, const QPoint& position,
                                     const QWidget* widget = nullptr) const override
    {
        note("hitTestComplexControl");
        return QProxyStyle::hitTestComplexControl(control, option, position, widget);
    }

    QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                           const QWidget* widget) const override
    {
        note("sizeFromContents");
        return QProxyStyle::sizeFromContents(type, option, size, widget);
    }

    int pixelMetric(PixelMetric metric, const QStyleOption* option = nullptr,
                    const QWidget* widget = nullptr) const override
    {
        note("pixelMetric");
        return QProxyStyle::pixelMetric(metric, option, widget);
    }

    int styleHint(StyleHint hint, const QStyleOption* option = nullptr, const QWidget* widget = nullptr,
                  QStyleHintReturn* data = nullptr) const override
    {
        note("styleHint");
        return QProxyStyle::styleHint(hint, option, widget, data);
    }

    int layoutSpacing(QSizePolicy::ControlType first, QSizePolicy::ControlType second, Qt::Orientation orientation,
                      const QStyleOption* option = nullptr, const QWidget* widget = nullptr) const override
    {
        note("layoutSpacing");
        return QProxyStyle::layoutSpacing(first, second, orientation, option, widget);
    }

    QPixmap standardPixmap(StandardPixmap pixmap, const QStyleOption* option,
                           const QWidget* widget = nullptr) const override
    {
        note("standardPixmap");
        return QProxyStyle::standardPixmap(pixmap, option, widget);
    }

    QIcon standardIcon(StandardPixmap icon, const QStyleOption* option = nullptr,
                       const QWidget* widget = nullptr) const override
    {
        note("standardIcon");
        return QProxyStyle::standardIcon(icon, option, widget);
    }

    QPixmap generatedIconPixmap(QIcon::Mode mode, const QPixmap& pixmap, const QStyleOption* option) const override
    {
        note("generatedIconPixmap");
        return QProxyStyle::generatedIconPixmap(mode, pixmap, option);
    }

    QRect itemPixmapRect(const QRect& rect, int flags, const QPixmap& pixmap) const override
    {
        note("itemPixmapRect");
        return QProxyStyle::itemPixmapRect(rect, flags, pixmap);
    }

    QRect itemTextRect(const QFontMetrics& metrics, const QRect& rect, int flags, bool enabled,
                       const QString& text) const override
    {
        note("itemTextRect");
        return QProxyStyle::itemTextRect(metrics, rect, flags, enabled, text);
    }

    void drawItemPixmap(QPainter* painter, const QRect& rect, int alignment, const QPixmap& pixmap) const override
    {
        note("drawItemPixmap");
        QProxyStyle::drawItemPixmap(painter, rect, alignment, pixmap);
    }

    void drawItemText(QPainter* painter, const QRect& rect, int flags, const QPalette& palette, bool enabled,
                      const QString& text, QPalette::ColorRole role = QPalette::NoRole) const override
    {
        note("drawItemText");
        QProxyStyle::drawItemText(painter, rect, flags, palette, enabled, text, role);
    }

  private:
    void note(const char* operation) const
    {
        m_calls.append(QString::fromLatin1(operation));
    }

    mutable QStringList m_calls;
};
