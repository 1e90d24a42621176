#pragma once

#include "simulator/panel/CMessageModel.h"

#include <QSortFilterProxyModel>
#include <QWidget>

class QLayout;
class QLineEdit;
class QTableView;

/// The table of the device's messages, with a filter above it, and with copy and save as text.
///
/// It stays at the newest message while that is in sight, and where it was scrolled to otherwise.
class CMessageTable : public QWidget
{
    Q_OBJECT

  public:
    explicit CMessageTable(QWidget* parent = nullptr);

    /// See CMessageModel::add().
    void add(const QList<Traffic>& messages);

    /// Writes the rows that the filter leaves, a line each, tabs between the columns, in UTF-8.
    /// false: it cannot be written; a file of that name is as it was.
    [[nodiscard]] bool save(const QString& path) const;

  public slots:
    /// Puts the selected rows on the clipboard, or all that the filter leaves where none is selected.
    void copy();

    /// Asks for a file and saves; says so if that fails.
    void askAndSave();

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    [[nodiscard]] QLayout* createBar();
    void createTable();
    void addCommands();
    void scrollAfterRemoval(int first, int last);
    [[nodiscard]] QString text(const QList<int>& rows) const;
    [[nodiscard]] QList<int> selectedRows() const;
    [[nodiscard]] QList<int> allRows() const;

    CMessageModel m_model;
    QSortFilterProxyModel m_filtered;
    QLineEdit* m_filter = nullptr;
    QTableView* m_table = nullptr;
};
