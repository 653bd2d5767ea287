#include "platform/gui/BoundCombo.h"

#include "platform/gui/Handler.h"

#include <QAbstractListModel>
#include <QCompleter>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListView>
#include <QWheelEvent>

class BoundCombo::Rows : public QAbstractListModel
{
public:
    Rows(std::shared_ptr<Recordset> rows, int listColumn, int boundColumn)
        : m_rows(std::move(rows)), m_listColumn(listColumn), m_boundColumn(boundColumn)
    {
    }
    int rowCount(const QModelIndex &parent) const override
    {
        return parent.isValid() || !m_rows ? 0 : m_rows->recordCount();
    }
    QVariant data(const QModelIndex &index, int role) const override
    {
        if (!index.isValid())
            return {};
        if (role == Qt::DisplayRole || role == Qt::EditRole)
            return m_rows->at(index.row(), m_listColumn).toText();
        if (role == Qt::UserRole)
            return boundValue(index.row()).toText();
        return {};
    }
    Value boundValue(int row) const { return m_rows->at(row, m_boundColumn); }

private:
    std::shared_ptr<Recordset> m_rows;
    int m_listColumn;
    int m_boundColumn;
};

/// Completes what is typed to the first row that begins so, unless a row reads just so: 1250 is not made 12500.
class BoundCombo::Completer : public QCompleter
{
public:
    explicit Completer(QObject *parent) : QCompleter(parent)
    {
        setCaseSensitivity(Qt::CaseInsensitive);
        setCompletionMode(InlineCompletion);
    }
    QString pathFromIndex(const QModelIndex &index) const override
    {
        // Of rows that are offered below, each can be taken.
        if (!index.isValid() || completionMode() == PopupCompletion)
            return QCompleter::pathFromIndex(index);
        const QModelIndex first = index.siblingAtRow(0);
        const bool isWhole =
            !model()->match(first, Qt::DisplayRole, completionPrefix(), 1, Qt::MatchFixedString).isEmpty();
        return isWhole ? completionPrefix() : QCompleter::pathFromIndex(index);
    }
};

BoundCombo::BoundCombo(QWidget *parent) : QComboBox(parent)
{
    setEditable(true);
    setCompleter(new Completer(this));
    setInsertPolicy(NoInsert);
    // Thousands of jobs are listed: nobody measures them all to find the widest.
    setSizeAdjustPolicy(AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(24);
    setMaxVisibleItems(16);
    // The box's own answer to a finished text, to put the row's capitals in its place, is not ours.
    disconnect(lineEdit(), &QLineEdit::editingFinished, this, nullptr);
    connect(this, &QComboBox::currentIndexChanged, this, &BoundCombo::commit);
    // A text that comes by other ways than the keys: pasted, dropped, set by the program.
    connect(this, &QComboBox::editTextChanged, this, [this](const QString &text) {
        if (!text.isEmpty())
            runUserAction([this] { fetchRows(); });
    });
    connect(lineEdit(), &QLineEdit::editingFinished, this, &BoundCombo::commit);
}

BoundCombo::~BoundCombo() = default;

void BoundCombo::setFreeText(bool freeText)
{
    m_freeText = freeText;
    completer()->setCompletionMode(freeText ? QCompleter::PopupCompletion : QCompleter::InlineCompletion);
}

void BoundCombo::setSource(std::shared_ptr<Recordset> rows, const QString &listField, const QString &boundField)
{
    const int listColumn = rows->fieldIndex(listField);
    const int boundColumn = rows->fieldIndex(boundField);
    take(std::make_unique<Rows>(std::move(rows), listColumn, boundColumn));
}

void BoundCombo::setSource(Recordset rows, const QString &listField, const QString &boundField)
{
    setSource(std::make_shared<Recordset>(std::move(rows)), listField, boundField);
}

void BoundCombo::setSource(Fetch fetch, const QString &listField, const QString &boundField)
{
    if (m_rows)
        clearSource();
    m_fetch = [this, fetch = std::move(fetch), listField, boundField] { setSource(fetch(), listField, boundField); };
}

void BoundCombo::clearSource() { take(std::make_unique<Rows>(nullptr, -1, -1)); }

QString BoundCombo::text() const
{
    if (m_freeText)
        return currentText();
    const int row = chosenRow();
    return row < 0 ? QString() : itemText(row);
}

void BoundCombo::setText(const QString &text)
{
    if (!text.isEmpty())
        fetchRows();
    {
        const QSignalBlocker quiet(this);
        setCurrentIndex(-1);
        setEditText(text);
        setCurrentIndex(chosenRow());
        // A free text keeps its own capitals.
        if (currentIndex() < 0 || m_freeText)
            setEditText(text);
    }
    commit();
}

Value BoundCombo::boundValue() const
{
    const int row = chosenRow();
    return row < 0 ? Value() : m_rows->boundValue(row);
}

void BoundCombo::showPopup()
{
    runUserAction([this] { fetchRows(); });
    // Not before: the list is made when it is first asked for.
    if (auto *list = qobject_cast<QListView *>(view()))
        list->setUniformItemSizes(true);
    QComboBox::showPopup();
}

void BoundCombo::keyPressEvent(QKeyEvent *event)
{
    // Enter takes the completion and presses the default button at once.
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        lineEdit()->deselect();
    else if (event->key() != Qt::Key_Escape)
        runUserAction([this] { fetchRows(); });
    QComboBox::keyPressEvent(event);
}

void BoundCombo::wheelEvent(QWheelEvent *event)
{
    // Scrolling past a box must not lend a tool to somebody else.
    event->ignore();
}

void BoundCombo::take(std::unique_ptr<Rows> rows)
{
    {
        const QSignalBlocker quiet(this);
        setModel(rows.get());
        completer()->setModel(rows.get());
        m_rows = std::move(rows);
    }
    m_fetch = nullptr;
    setText({});
}

void BoundCombo::fetchRows()
{
    if (!m_fetch)
        return;
    const QSignalBlocker quiet(this);
    const QString shown = currentText();
    // Kept while it runs, and for another attempt should it fail.
    const std::function<void()> fetch = m_fetch;
    fetch();
    setText(shown);
}

int BoundCombo::chosenRow() const
{
    const QString shown = currentText();
    if (currentIndex() >= 0 && itemText(currentIndex()).compare(shown, Qt::CaseInsensitive) == 0)
        return currentIndex();
    return shown.isEmpty() ? -1 : findText(shown, Qt::MatchFixedString);
}

void BoundCombo::commit()
{
    const std::pair<int, QString> now{chosenRow(), currentText()};
    if (now.first >= 0) {
        const QSignalBlocker quiet(this);
        setCurrentIndex(now.first);
        setEditText(m_freeText ? now.second : itemText(now.first));
    }
    if (now == m_announced)
        return;
    m_announced = now;
    emit chosen();
}
