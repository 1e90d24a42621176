#pragma once

#include <QHash>
#include <QIcon>
#include <QPalette>
#include <QProxyStyle>

class QStyleOptionSlider;

/// The editor's flat look for menus, menu bars, scroll bars, line edits and its two popup item views; every other
/// widget keeps the look that the application had before.
///
/// A request for a widget of the editor's set goes to this style and, where it adds nothing, to the "Windows" style;
/// one for any other widget, or for none, goes to the application's previous style. Colours are in StyleColors.h,
/// pictures in StyleImages.h.
///
/// Units    logical pixels.      Threads  GUI thread only.
/// Owns     the application's previous style, which it takes over in its constructor. So it has to be made the
///          application's style at once, with QApplication::setStyle(), which then owns it.
/// Painting leaves the painter's text antialiasing off, because what a widget writes after its panel is written in
///          the skin's fonts, too.
class CJXStyle : public QProxyStyle
{
    Q_OBJECT

  public:
    CJXStyle();

    /// Whether the widget is of the editor's set. false: null.
    [[nodiscard]] bool isCustomStyle(const QWidget* w) const;

    /// Fills one group with the editor's colours.
    void setStandardPaletteColorGroup(QPalette* palette, QPalette::ColorGroup group) const;

    using QProxyStyle::polish;
    using QProxyStyle::unpolish;
    void polish(QWidget* w) override;
    void unpolish(QWidget* w) override;
    void polish(QApplication* application) override;
    void unpolish(QApplication* application) override;
    void polish(QPalette& palette) override;
    [[nodiscard]] QPalette standardPalette() const override;

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* w = nullptr) const override;
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* w = nullptr) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                            const QWidget* w = nullptr) const override;

    [[nodiscard]] QRect subElementRect(SubElement element, const QStyleOption* option, const QWidget* w) const override;
    [[nodiscard]] QRect subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl subControl,
                                       const QWidget* w) const override;
    [[nodiscard]] SubControl hitTestComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                                                   const QPoint& position, const QWidget* w = nullptr) const override;
    [[nodiscard]] QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                                         const QWidget* w) const override;
    [[nodiscard]] int pixelMetric(PixelMetric metric, const QStyleOption* option = nullptr,
                                  const QWidget* w = nullptr) const override;
    [[nodiscard]] int styleHint(StyleHint hint, const QStyleOption* option = nullptr, const QWidget* w = nullptr,
                                QStyleHintReturn* returnData = nullptr) const override;
    [[nodiscard]] int layoutSpacing(QSizePolicy::ControlType control1, QSizePolicy::ControlType control2,
                                    Qt::Orientation orientation, const QStyleOption* option = nullptr,
                                    const QWidget* w = nullptr) const override;
    [[nodiscard]] QPixmap standardPixmap(StandardPixmap pixmap, const QStyleOption* option,
                                         const QWidget* w = nullptr) const override;
    [[nodiscard]] QIcon standardIcon(StandardPixmap icon, const QStyleOption* option = nullptr,
                                     const QWidget* w = nullptr) const override;

    // No widget says whose these are: always the previous style's.
    [[nodiscard]] QPixmap generatedIconPixmap(QIcon::Mode mode, const QPixmap& pixmap,
                                              const QStyleOption* option) const override;
    [[nodiscard]] QRect itemPixmapRect(const QRect& rect, int flags, const QPixmap& pixmap) const override;
    [[nodiscard]] QRect itemTextRect(const QFontMetrics& metrics, const QRect& rect, int flags, bool enabled,
                                     const QString& text) const override;
    void drawItemPixmap(QPainter* painter, const QRect& rect, int alignment, const QPixmap& pixmap) const override;
    void drawItemText(QPainter* painter, const QRect& rect, int flags, const QPalette& palette, bool enabled,
                      const QString& text, QPalette::ColorRole role = QPalette::NoRole) const override;

  private:
    void drawBranch(const QStyleOption& option, QPainter* painter) const;
    void drawScrollBar(const QStyleOptionSlider& bar, QPainter* painter, const QWidget* w) const;

    QStyle* m_fallbackStyle;                                               ///< child
    mutable QHash<std::pair<StandardPixmap, bool>, QIcon> m_standardIcons; ///< by what it shows and whether it is ours
    QPalette m_palette;
};
