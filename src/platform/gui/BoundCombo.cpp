#include "platform/gui/BoundCombo.h"

#include "platform/gui/UserAction.h"

#include <QAbstractListModel>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListView>
#include <QWheelEvent>

namespace {

// As people type who do not care for capitals and accents: DVOŘÁK is found by "dvor".
QString searchForm(const QString &text)
{
    QString form = text.toCaseFolded();
    if (std::all_of(form.begin(), form.end(), [](QChar c) { return c.unicode() < 0x80; }))
        return form;
    form = form.normalized(QString::NormalizationForm_D);
    form.removeIf([](QChar c) { return c.category() == QChar::Mark_NonSpacing; });
    return form;
}

}

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
    /// The shown texts as they are searched; made when something is typed for the first time.
    const QStringList &searchForms() const
    {
        for (int row = int(m_searchForms.size()); row < rowCount({}); ++row)
            m_searchForms.append(searchForm(m_rows->at(row, m_listColumn).toText()));
        return m_searchForms;
    }

private:
    mutable QStringList m_searchForms;
    std::shared_ptr<Recordset> m_rows;
    int m_listColumn;
    int m_boundColumn;
};

BoundCombo::BoundCombo(QWidget *parent) : QComboBox(parent)
{
    setEditable(true);
    setCompleter(nullptr); // what is typed is completed here, without a list that hangs over the buttons
    setInsertPolicy(NoInsert);
    // Thousands of jobs are listed: nobody measures them all to find the widest.
    setSizeAdjustPolicy(AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(24);
    setMaxVisibleItems(16);
    // When a text is finished, the box itself would put the row's text with its capitals in its place; commit() decides
    // that here.
    disconnect(lineEdit(), &QLineEdit::editingFinished, this, nullptr);
    connect(this, &QComboBox::currentIndexChanged, this, &BoundCombo::commit);
    // A text that comes by other ways than the keys: pasted, dropped, set by the program.
    connect(this, &QComboBox::editTextChanged, this, [this](const QString &text) {
        if (!text.isEmpty())
            runUserAction([this] { fetchRows(); });
    });
    connect(lineEdit(), &QLineEdit::textEdited, this, &BoundCombo::lineEdit_TextEdited);
    connect(lineEdit(), &QLineEdit::editingFinished, this, &BoundCombo::commit);
}

BoundCombo::~BoundCombo() = default;

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
        m_whyUnoffered.clear();
        m_typed.clear();
        setCurrentIndex(-1);
        setEditText(text);
        setCurrentIndex(chosenRow());
        // A free text keeps its own capitals.
        if (currentIndex() < 0 || m_freeText)
            setEditText(text);
    }
    commit();
}

void BoundCombo::showUnoffered(const QString &text, const QString &why)
{
    setText({});
    m_whyUnoffered = why;
    setEditText(text);
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
    // Only here, as view() makes the list: most boxes are never opened.
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

void BoundCombo::lineEdit_TextEdited(const QString &text)
{
    m_whyUnoffered.clear();
    const bool isAtEnd = lineEdit()->cursorPosition() == text.size();
    const bool isShortened = isAtEnd && searchForm(m_typed).startsWith(searchForm(text));
    // A completed text has the row's capitals; a free one, typed to its end, keeps its own.
    if (isShortened)
        m_typed.truncate(text.size());
    else if (isAtEnd && text.startsWith(m_typed, Qt::CaseInsensitive))
        m_typed += text.mid(m_typed.size());
    else
        m_typed = text;
    const int row = isShortened || !isAtEnd ? -1 : rowToComplete(text);
    if (row < 0) {
        if (m_freeText && isAtEnd && text != m_typed)
            setEditText(m_typed);
        return;
    }
    // A letter and its accent may be two characters.
    const QString whole = itemText(row);
    qsizetype typed = 1;
    while (typed < whole.size() && searchForm(whole.left(typed)).size() < searchForm(text).size())
        ++typed;
    setEditText(whole);
    // Backwards, so that the end of a long text does not push its beginning out of sight.
    const int end = int(currentText().size());
    lineEdit()->setSelection(end, int(typed) - end);
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
    if (shown.isEmpty() || !m_whyUnoffered.isEmpty() || !m_rows)
        return -1;
    int row = findText(shown, Qt::MatchFixedString);
    if (row < 0 && m_takesBoundValue)
        row = findData(shown.trimmed());
    if (row < 0 && !m_freeText)
        row = int(m_rows->searchForms().indexOf(searchForm(shown)));
    return row;
}

// The row that a typed text is completed to; -1 where it may be whole: 1250 is not made 12500.
int BoundCombo::rowToComplete(const QString &typed) const
{
    if (typed.isEmpty() || !m_rows || (m_takesBoundValue && findData(typed) >= 0))
        return -1;
    const QString sought = searchForm(typed);
    const QStringList &forms = m_rows->searchForms();
    int first = -1;
    bool isOnly = true;
    for (int row = 0; row < forms.size(); ++row) {
        if (!forms[row].startsWith(sought))
            continue;
        if (forms[row] == sought)
            return -1;
        isOnly = isOnly && (first < 0 || forms[row] == forms[first]);
        if (first < 0)
            first = row;
    }
    return m_freeText && !isOnly ? -1 : first;
}

void BoundCombo::commit()
{
    if (currentIndex() >= 0)
        m_whyUnoffered.clear();
    m_typed.clear();
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
