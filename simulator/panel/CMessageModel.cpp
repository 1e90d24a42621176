#include "simulator/panel/CMessageModel.h"

#include "simulator/device/DeviceMessages.h"
#include "simulator/device/TrafficText.h"
#include "simulator/panel/PanelText.h"

namespace
{
bool isKeep(const Traffic& message)
{
    return DeviceMessages::typeOf(message.bytes) == DeviceMessages::Type::Keep;
}
} // namespace

void CMessageModel::add(const QList<Traffic>& messages)
{
    if (messages.isEmpty())
        return;
    // The row that may go on counting begins the new ones.
    std::deque<Row> rows;
    const bool goesOn = !m_rows.empty() && isKeep(m_rows.back().last);
    if (goesOn)
        rows.push_back(m_rows.back());
    for (const Traffic& message : messages)
        append(rows, message);
    if (goesOn) {
        m_rows.back() = rows.front();
        rows.pop_front();
        const int row = rowCount() - 1;
        emit dataChanged(index(row, 0), index(row, Columns - 1));
    }
    insert(rows);
    trim();
}

int CMessageModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

int CMessageModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : Columns;
}

QVariant CMessageModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    if (role == Qt::TextAlignmentRole && index.column() == Time)
        return QVariant(Qt::AlignRight | Qt::AlignVCenter);
    if (role != Qt::DisplayRole && role != Qt::ToolTipRole)
        return {};
    return text(m_rows[static_cast<size_t>(index.row())], index.column());
}

QVariant CMessageModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal)
        return {};
    if (role == Qt::TextAlignmentRole)
        return QVariant((section == Time ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
    if (role != Qt::DisplayRole)
        return {};
    switch (section) {
    case Time:
        return tr("Seconds");
    case Direction:
        return tr("Device");
    case Meaning:
        return tr("Meaning");
    case Bytes:
        return tr("Bytes");
    default:
        return {};
    }
}

void CMessageModel::append(std::deque<Row>& rows, const Traffic& message)
{
    const bool keep = isKeep(message);
    if (!keep || rows.empty() || !isKeep(rows.back().last))
        rows.emplace_back();
    Row& row = rows.back();
    row.last = message;
    if (keep)
        ++(message.direction == Traffic::Direction::ToDevice ? row.keepsReceived : row.keepsSent);
}

void CMessageModel::insert(const std::deque<Row>& rows)
{
    if (rows.empty())
        return;
    const int first = rowCount();
    beginInsertRows({}, first, first + static_cast<int>(rows.size()) - 1);
    m_rows.insert(m_rows.end(), rows.begin(), rows.end());
    endInsertRows();
}

void CMessageModel::trim()
{
    const int tooMany = rowCount() - k_limit;
    if (tooMany <= 0)
        return;
    beginRemoveRows({}, 0, tooMany - 1);
    m_rows.erase(m_rows.begin(), m_rows.begin() + tooMany);
    endRemoveRows();
}

QString CMessageModel::text(const Row& row, int column)
{
    const bool keep = isKeep(row.last);
    switch (column) {
    case Time:
        return QString::number(static_cast<double>(row.last.time) / 1000.0, 'f', 3);
    case Direction:
        if (row.keepsReceived > 0 && row.keepsSent > 0)
            return tr("both");
        return row.last.direction == Traffic::Direction::ToDevice ? tr("received") : tr("sent");
    case Meaning:
        return keep ? tr("Keep-alive: %1 received, %2 answered").arg(row.keepsReceived).arg(row.keepsSent)
                    : PanelText::meaning(row.last.bytes);
    case Bytes:
        return bytesText(row.last.bytes);
    default:
        return {};
    }
}
