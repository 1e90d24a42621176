#pragma once

#include "widgets/CTracklessSlider.h"

#include <memory>

class CLineEdit;
class QValidator;

/// A slider that shows its value as text: drag it up or down, turn the wheel over it, or type, after a double-click
/// or at once.
///
/// Shown    value x multiplier + offset, by the printf-style format (see numberText()).
/// Typed    becomes the value typed / multiplier - offset, cut toward zero.
/// Threads  GUI thread only.
class CTextSlider : public CTracklessSlider
{
    Q_OBJECT
    Q_PROPERTY(Qt::Alignment alignment READ alignment WRITE setAlignment)
    Q_PROPERTY(QString format READ format WRITE setFormat)
    Q_PROPERTY(double offset READ offset WRITE setOffset)
    Q_PROPERTY(double multiplier READ multiplier WRITE setMultiplier)
    Q_PROPERTY(bool directEdit READ directEdit WRITE setDirectEdit)
    Q_PROPERTY(int editMaxLength READ editMaxLength WRITE setEditMaxLength)
    Q_PROPERTY(QString editInputMask READ editInputMask WRITE setEditInputMask)
    Q_PROPERTY(QString editValidatorRegExp READ editValidatorRegExp WRITE setEditValidatorRegExp)
    Q_PROPERTY(int controllerID READ controllerID WRITE setControllerID)

  public:
    explicit CTextSlider(QWidget* parent = nullptr);
    ~CTextSlider() override;

    /// Of the text, shown and typed.
    [[nodiscard]] Qt::Alignment alignment() const;
    void setAlignment(Qt::Alignment alignment);

    [[nodiscard]] QString format() const;
    void setFormat(const QString& format);
    [[nodiscard]] double offset() const;
    void setOffset(double offset);
    [[nodiscard]] double multiplier() const;
    void setMultiplier(double multiplier);

    /// Whether a double-click lets the user type.
    [[nodiscard]] bool directEdit() const;
    void setDirectEdit(bool on);

    /// Characters that can be typed.
    [[nodiscard]] int editMaxLength() const;
    void setEditMaxLength(int length);

    /// Stored and reported only: what can be typed follows from offset and multiplier.
    [[nodiscard]] QString editInputMask() const;
    void setEditInputMask(const QString& mask);
    [[nodiscard]] QString editValidatorRegExp() const;
    void setEditValidatorRegExp(const QString& expression);

    [[nodiscard]] QColor textColor() const;
    void setTextColor(const QColor& color);

    /// The field for typing: a child, hidden while nobody types.
    [[nodiscard]] CLineEdit* lineEdit() const;

    /// Begins to type with this text in the place of the shown one. Nothing happens where typing is not allowed.
    void type(const QString& text);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

  public slots:
    /// End of typing. Text that is no number leaves the value as it is.
    virtual void acceptEdit();
    void abortEdit();

  protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void paintDoubleBuffer(QPainter* painter) override;

  private:
    void openEdit();
    void setEditValidator();
    void closeEdit(Qt::FocusReason reason);

    Qt::Alignment m_alignment = Qt::AlignLeft | Qt::AlignVCenter;
    QString m_format = QStringLiteral("%.0f");
    double m_offset = 0.0;
    double m_multiplier = 1.0;
    bool m_directEdit = false;
    int m_editMaxLength;
    QString m_editInputMask;
    QString m_editValidatorRegExp;
    QString m_text;        ///< as last drawn
    CLineEdit* m_lineEdit; ///< child
    bool m_editAborted = false;
    QColor m_textColor = Qt::black;
    std::unique_ptr<QValidator> m_editValidator;
};
