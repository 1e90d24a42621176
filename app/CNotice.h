#pragma once

#include <QObject>
#include <QString>

class QWidget;

/// A sentence for those who listen, about what has just been done: it is spoken once, wherever the focus is, and stays
/// in the window to be read again as long as this lives.
///
/// Threads  GUI thread only.
class CNotice : public QObject
{
    Q_OBJECT

  public:
    /// window   becomes the parent.
    CNotice(QWidget* window, QString text);
    ~CNotice() override;

    [[nodiscard]] const QString& text() const;

    /// Tells that it is there now. Once.
    void tell();

  private:
    QString m_text;
};
