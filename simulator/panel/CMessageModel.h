#pragma once

#include "simulator/device/CTrafficLog.h"

#include <QAbstractTableModel>

#include <deque>

/// The messages of a device as a table: time, direction, meaning, bytes.
///
/// Keep-alive   messages that follow one another are one row, which counts them.
/// Memory       the last k_limit rows; older ones go, those of one call of add() together.
/// Threads      GUI thread only.
class CMessageModel : public QAbstractTableModel
{
    Q_OBJECT

  public:
    enum Column
    {
        Time,
        Direction,
        Meaning,
        Bytes,
        Columns
    };

    using QAbstractTableModel::QAbstractTableModel;

    static constexpr int k_limit = 5'000;

    /// Appends what has passed, oldest first: one change of the table, however many there are.
    void add(const QList<Traffic>& messages);

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                      int role = Qt::DisplayRole) const override;

  private:
    struct Row
    {
        Traffic last; ///< the message, or the last one of those that are kept in this row
        int keepsReceived = 0;
        int keepsSent = 0;
    };

    static void append(std::deque<Row>& rows, const Traffic& message);
    void insert(const std::deque<Row>& rows);
    void trim();
    [[nodiscard]] static QString text(const Row& row, int column);

    std::deque<Row> m_rows;
};
