#include "simulator/panel/CMessageTable.h"

#include "simulator/panel/PanelLook.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPainter>
#include <QPushButton>
#include <QSaveFile>
#include <QScrollBar>
#include <QTableView>

#include <algorithm>
#include <numeric>

using namespace PanelLook;

namespace
{
constexpr int k_barMargin = 8;
constexpr int k_rowPadding = 4;
constexpr int k_rowsAtLeast = 6;
constexpr int k_smallestFont = 9; // pixels
} // namespace

CMessageTable::CMessageTable(QWidget* parent) : QWidget(parent)
{
    m_filtered.setSourceModel(&m_model);
    m_filtered.setFilterKeyColumn(-1); // any of them
    m_filtered.setFilterCaseSensitivity(Qt::CaseInsensitive);
    createTable();

    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->setSpacing(0);
    layout->addLayout(createBar());
    layout->addWidget(m_table, 1);
    addCommands();
}

void CMessageTable::add(const QList<Traffic>& messages)
{
    const QScrollBar* const bar = m_table->verticalScrollBar();
    const bool atNewest = bar->value() == bar->maximum();
    m_model.add(messages);
    if (atNewest)
        m_table->scrollToBottom();
}

bool CMessageTable::save(const QString& path) const
{
    QSaveFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(text(allRows()).toUtf8()) >= 0 && file.commit();
}

void CMessageTable::copy()
{
    const QList<int> selected = selectedRows();
    QApplication::clipboard()->setText(text(selected.isEmpty() ? allRows() : selected));
}

void CMessageTable::askAndSave()
{
    const QString path =
        QFileDialog::getSaveFileName(this, tr("Save messages"), QStringLiteral("messages.txt"), tr("Text (*.txt)"));
    if (!path.isEmpty() && !save(path))
        QMessageBox::warning(this, tr("Save messages"), tr("\"%1\" cannot be written.").arg(path));
}

void CMessageTable::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), plate);
    // The field's frame, as the editor's fields have it.
    const QRect field = m_filter->geometry();
    painter.fillRect(field.adjusted(-1, -1, 1, 2), white);
    painter.fillRect(field.adjusted(-1, -1, 1, 1), steel);
}

QLayout* CMessageTable::createBar()
{
    m_filter = new QLineEdit;
    m_filter->setObjectName("filter");
    m_filter->setAccessibleName(tr("Filter"));
    m_filter->setPlaceholderText(tr("Filter, such as knob 3"));
    m_filter->setClearButtonEnabled(true);
    connect(m_filter, &QLineEdit::textChanged, &m_filtered, &QSortFilterProxyModel::setFilterFixedString);
    connect(m_filter, &QLineEdit::textChanged, m_table, &QTableView::scrollToBottom);

    auto* const caption = new QLabel(tr("&Messages"));
    caption->setBuddy(m_filter);
    auto* const copyButton = new QPushButton(tr("&Copy"));
    copyButton->setObjectName("copy");
    copyButton->setToolTip(tr("Copies the selected messages, or all that are shown"));
    connect(copyButton, &QPushButton::clicked, this, &CMessageTable::copy);
    auto* const saveButton = new QPushButton(tr("Sa&ve As..."));
    saveButton->setObjectName("save");
    saveButton->setToolTip(tr("Saves the messages that are shown, as text"));
    connect(saveButton, &QPushButton::clicked, this, &CMessageTable::askAndSave);

    auto* const bar = new QHBoxLayout;
    bar->setContentsMargins(k_barMargin, k_barMargin, k_barMargin, k_barMargin);
    bar->setSpacing(k_barMargin);
    bar->addWidget(caption);
    bar->addWidget(m_filter, 1);
    bar->addWidget(copyButton);
    bar->addWidget(saveButton);
    return bar;
}

void CMessageTable::createTable()
{
    m_table = new QTableView;
    m_table->setObjectName("messages");
    m_table->setAccessibleName(tr("Messages"));
    m_table->setModel(&m_filtered);
    QFont small = font();
    small.setPixelSize(std::max(fontInfo().pixelSize() - 2, k_smallestFont));
    m_table->setFont(small);
    m_table->horizontalHeader()->setFont(small);
    m_table->setFrameShape(QFrame::NoFrame);
    m_table->setShowGrid(false);
    m_table->setAlternatingRowColors(true);
    m_table->setWordWrap(false);
    m_table->setTextElideMode(Qt::ElideMiddle); // the last bytes are those that differ
    m_table->setTabKeyNavigation(false);        // Tab leaves the table
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_table->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);

    const QFontMetrics metrics = m_table->fontMetrics();
    m_table->verticalHeader()->hide();
    m_table->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed); // no look at every row
    m_table->verticalHeader()->setDefaultSectionSize(metrics.height() + k_rowPadding);
    m_table->horizontalHeader()->setHighlightSections(false);
    m_table->horizontalHeader()->setStretchLastSection(true);
    const auto setWidth = [&](int column, const char* widest) {
        m_table->setColumnWidth(column, metrics.horizontalAdvance(QLatin1String(widest)));
    };
    setWidth(CMessageModel::Time, "10000.000  ");
    setWidth(CMessageModel::Direction, "received   ");
    setWidth(CMessageModel::Meaning, "Knob 8: CC 10, channel 1, max 127, min 0, LED concave   ");
    m_table->setMinimumHeight(k_rowsAtLeast * m_table->verticalHeader()->defaultSectionSize());
    connect(&m_filtered, &QAbstractItemModel::rowsRemoved, this,
            [this](const QModelIndex&, int first, int last) { scrollAfterRemoval(first, last); });
}

void CMessageTable::addCommands()
{
    const auto addCommand = [this](const QString& text, const QKeySequence& keys, void (CMessageTable::*slot)()) {
        auto* const action = new QAction(text, m_table);
        action->setShortcut(keys);
        action->setShortcutContext(Qt::WidgetShortcut);
        connect(action, &QAction::triggered, this, slot);
        m_table->addAction(action);
    };
    addCommand(tr("&Copy"), QKeySequence::Copy, &CMessageTable::copy);
    addCommand(tr("&Save As..."), QKeySequence::Save, &CMessageTable::askAndSave);
    m_table->setContextMenuPolicy(Qt::ActionsContextMenu);
}

/// What is being read stays in sight when old rows go.
void CMessageTable::scrollAfterRemoval(int first, int last)
{
    QScrollBar* const bar = m_table->verticalScrollBar();
    if (first == 0)
        bar->setValue(bar->value() - (last + 1));
}

QString CMessageTable::text(const QList<int>& rows) const
{
    QString text;
    for (const int row : rows) {
        QStringList columns;
        for (int column = 0; column < CMessageModel::Columns; ++column)
            columns += m_filtered.index(row, column).data().toString();
        text += columns.join('\t') + '\n';
    }
    return text;
}

QList<int> CMessageTable::selectedRows() const
{
    QList<int> rows;
    for (const QModelIndex& index : m_table->selectionModel()->selectedRows())
        rows += index.row();
    std::ranges::sort(rows);
    return rows;
}

QList<int> CMessageTable::allRows() const
{
    QList<int> rows(m_filtered.rowCount());
    std::iota(rows.begin(), rows.end(), 0);
    return rows;
}
