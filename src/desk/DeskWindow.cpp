#include "desk/DeskWindow.h"

#include "common/ItemId.h"
#include "db/Session.h"
#include "desk/StockTakeReport.h"
#include "platform/gui/HourGlass.h"
#include "platform/gui/Icons.h"
#include "platform/reportcontrol/PreviewWindow.h"
#include "platform/reportcontrol/ReportControl.h"
#include "platform/reportengine/ResultCode.h"
#include "platform/system/Clock.h"
#include "platform/system/UserSettings.h"
#include "reports/ReportErrorTexts.h"

#include <QAccessible>
#include <QApplication>
#include <QCloseEvent>
#include <QDir>
#include <QGridLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QPainter>
#include <QPrinterInfo>
#include <QScrollBar>
#include <QShortcut>
#include <QStandardPaths>
#include <QStyledItemDelegate>
#include <QToolButton>

#include <algorithm>

namespace {

constexpr int patience = 30; // milliseconds that the window may stand still for the crib
constexpr int retryEvery = 100;
constexpr int lookForRestEvery = 5000;
constexpr auto muteSetting = "desk/muted";
constexpr auto placeSetting = "desk/place";
constexpr int smallWidth = 560, smallHeight = 300;
constexpr auto keyProperty = "key"; ///< of a button

/// Background and text of an answer, legible beside a light and a dark palette alike; the icon says it without colour.
struct Look {
    QRgb background;
    QRgb text;
    const char *icon;
    const char *meaning;
};
constexpr Look looks[] = {
    {0xff1b6b3a, 0xffffffff, "answer-done", "Done"},
    {0xfff4c430, 0xff000000, "answer-attention", "Attention"},
    {0xffb3261e, 0xffffffff, "answer-refused", "Refused"},
    {0xffb9d3ee, 0xff000000, "answer-waiting", "Waiting"},
};

DeskList::Row iconRow(int icon, const QStringList &texts, qint64 id = 0)
{
    switch (icon) {
    case ItemIcon::toolOut:
        return {Icons::icon("tool-out"), "out", texts, id};
    case ItemIcon::toolInStock:
        return {Icons::icon("tool-in"), "in the crib", texts, id};
    case ItemIcon::folder:
        return {Icons::folder(), {}, texts, id};
    default:
        return {{}, {}, texts, id};
    }
}

/// Rows that a finger hits. A text goes on through the empty cells after it.
class TallRows : public QStyledItemDelegate
{
public:
    explicit TallRows(QTreeView *view) : QStyledItemDelegate(view), m_header(view->header()) { }
    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        const auto isEmpty = [&](int column) { return index.siblingAtColumn(column).data().toString().isEmpty(); };
        int first = index.column(), last = first;
        while (first > 0 && isEmpty(first))
            --first;
        while (last + 1 < m_header->count() && isEmpty(last + 1))
            ++last;
        QStyleOptionViewItem whole = option;
        whole.rect.setLeft(m_header->sectionViewportPosition(first));
        whole.rect.setRight(m_header->sectionViewportPosition(last) + m_header->sectionSize(last) - 1);
        painter->save();
        painter->setClipRect(option.rect, Qt::IntersectClip);
        QStyledItemDelegate::paint(painter, whole, index.siblingAtColumn(first));
        painter->restore();
        if (index.data(Qt::CheckStateRole).isValid())
            frameBox(painter, option, index);
    }
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        const QSize own = QStyledItemDelegate::sizeHint(option, index);
        return {own.width(), own.height() * 4 / 3};
    }

private:
    // Some styles frame it in a colour that a dark palette swallows.
    void frameBox(QPainter *painter, QStyleOptionViewItem option, const QModelIndex &index) const
    {
        initStyleOption(&option, index);
        const QStyle *const style = option.widget->style();
        const QRect box = style->subElementRect(QStyle::SE_ItemViewItemCheckIndicator, &option, option.widget);
        painter->setPen(option.palette.color(QPalette::Text));
        painter->drawRect(box.adjusted(0, 0, -1, -1));
    }

    const QHeaderView *m_header;
};

const QStringList deedHeadings{"Time", "What", "Tool", "Part Number", "Who", "What For"};

}

/// One button, with its key. Those of commands do what scanning the command does.
struct DeskWindow::Button {
    const char *name;
    const char *caption;
    int key;
    void (DeskWindow::*handler)();
    Code::Kind command = Code::Nothing;
};

DeskWindow::DeskWindow() : m_sheet(new ReportControl(Session::database(), this))
{
    ui.setupUi(this);
    Session::database().setPatience(patience);
    m_isMuted = UserSettings::value(muteSetting) == "1";
    m_sheet->reportFile = "LoanSheet.rpt";
    m_sheet->windowTitle = "Hand-over sheet";
    m_deeds.setContents(deedHeadings, {});
    ui.lstLines->setItemDelegate(new TallRows(ui.lstLines));
    ui.lstLines->header()->setResizeContentsPrecision(0); // what is in sight
    ui.lstLines->header()->setStretchLastSection(false);
    ui.lblWho->setElideMode(Qt::ElideMiddle); // a long name hides no job
    addButtons();

    connect(ui.txtScan, &ScanField::scanned, this, [this](const QString &text) {
        closePreviews();
        act([&] { take(m_desk.scan(text)); });
    });
    connect(ui.txtScan, &ScanField::steered, this, [this](int key) { act([&] { steer(key); }); });
    connect(ui.txtScan, &ScanField::dismissed, this, [this] { act([this] { dismiss(); }); });
    connect(&m_lines, &DeskList::ticked, this, [this](int row) { act([&] { tick(row); }); });
    connect(ui.lstLines, &QTreeView::clicked, this, [this] {
        if (m_page == Page::Choices)
            act([this] { chooseCurrent(); });
    });
    connect(&m_retry, &QTimer::timeout, this, [this] { act([this] { take(m_desk.goOn()); }); });
    connect(&m_rest, &QTimer::timeout, this, [this] { act([this] { take(m_desk.endVisitAtRest()); }); });
    m_rest.start(lookForRestEvery);
    resize(1000, 640);
    restoreGeometry(UserSettings::value(placeSetting));
    showPage(Page::Deeds);
    showState();
    say({Answer::Done, "Ready. F1 tells how it works."});
    ui.txtScan->setFocus();
    qApp->installEventFilter(this);
}

DeskWindow::~DeskWindow() = default;

// ---- buttons

void DeskWindow::addButtons()
{
    static constexpr Button commands[] = {
        {"cmdOut", "Out", Qt::Key_F2, nullptr, Code::Out},
        {"cmdIn", "In", Qt::Key_F3, nullptr, Code::In},
        {"cmdUndo", "Undo", Qt::Key_F4, nullptr, Code::Undo},
        {"cmdDone", "Done", Qt::Key_F5, nullptr, Code::Done},
        {"cmdCount", "Count", Qt::Key_F6, nullptr, Code::Count},
        {"cmdSheet", "Sheet", Qt::Key_F7, &DeskWindow::printSheet},
        {"cmdSound", "Sound", Qt::Key_F8, &DeskWindow::toggleSound},
    };
    static constexpr Button offers[] = {
        {"cmdStore", "Store Here", Qt::Key_F9, &DeskWindow::primary},
        {"cmdLeave", "Leave", Qt::Key_F10, &DeskWindow::secondary},
        {"cmdAside", "Put Aside", Qt::Key_F11, &DeskWindow::putAside},
    };
    for (const Button &button : commands)
        addButton(button, ui.pnlCommands);
    for (const Button &button : offers)
        addButton(button, ui.pnlOffer);
}

void DeskWindow::addButton(const Button &row, QWidget *panel)
{
    auto *button = new QToolButton(panel);
    button->setObjectName(row.name);
    button->setProperty(keyProperty, QKeySequence(row.key).toString());
    button->setFocusPolicy(Qt::NoFocus); // the field keeps the keyboard
    button->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    auto *layout = static_cast<QGridLayout *>(panel->layout());
    layout->addWidget(button, 0, layout->count());
    const auto press = [this, row] {
        act([&] {
            if (row.handler)
                (this->*row.handler)();
            else
                take(m_desk.take({row.command}));
        });
        ui.txtScan->setFocus();
    };
    connect(button, &QToolButton::clicked, this, press);
    auto *shortcut = new QShortcut(QKeySequence(row.key), this);
    shortcut->setAutoRepeat(false); // a key that is held down is one answer, and one sheet
    connect(shortcut, &QShortcut::activated, this, press);
    setCaption(row.name, row.caption);
}

QToolButton *DeskWindow::button(const char *name) const { return findChild<QToolButton *>(name); }

void DeskWindow::setCaption(const char *name, const char *caption)
{
    QToolButton *const named = button(name);
    named->setText(isSmall() ? QString(caption) : named->property(keyProperty).toString() + ' ' + caption);
    named->setToolTip(named->property(keyProperty).toString());
    named->setAccessibleName(caption);
}

// ---- answers

void DeskWindow::act(const std::function<void()> &action)
{
    try {
        action();
    } catch (const std::exception &error) {
        say({Answer::Refused, "That was not done. " + QString::fromUtf8(error.what())});
    }
}

void DeskWindow::take(const QList<Answer> &answers)
{
    const QList<DeedLine> lines = m_desk.takeLines();
    for (const DeedLine &line : lines)
        m_deeds.prepend(iconRow(
            line.icon,
            {line.when.toString("hh:mm:ss"), line.what, line.tool, line.partNumber, line.side.who, line.side.charge}));
    if (!answers.isEmpty())
        sayWorst(answers);
    if (m_desk.isWaiting() && !m_retry.isActive())
        m_retry.start(retryEvery);
    else if (!m_desk.isWaiting())
        m_retry.stop();
    if (!answers.isEmpty() || !lines.isEmpty())
        showState();
}

// Many answers come at once when a crib that was held is free again. Nobody sees all of them: what did not go well
// stays in the list.
void DeskWindow::sayWorst(const QList<Answer> &answers)
{
    const auto gravity = [](const Answer &answer) { return Answer::gravity(answer.sound); };
    const Answer &worst = *std::max_element(answers.rbegin(), answers.rend(),
                                            [&](const Answer &a, const Answer &b) { return gravity(a) < gravity(b); });
    for (const Answer &answer : answers) {
        const Look &look = looks[answer.tone];
        if (answer.tone == Answer::Refused || (answer.tone == Answer::Attention && &answer != &worst))
            m_deeds.prepend({Icons::icon(look.icon),
                             look.meaning,
                             {Clock::now().toString("hh:mm:ss"), look.meaning, answer.words, {}, {}, {}}});
    }
    say(worst);
    showChoices(worst.choices);
}

void DeskWindow::say(const Answer &answer)
{
    const Look &look = looks[answer.tone];
    QPalette palette = ui.frameAnswer->palette();
    palette.setColor(QPalette::Window, QColor(look.background));
    palette.setColor(QPalette::WindowText, QColor(look.text));
    ui.frameAnswer->setPalette(palette);
    m_tone = answer.tone;
    showTone();
    ui.lblAnswer->setText(answer.words);
    QAccessibleEvent spoken(ui.lblAnswer, QAccessible::Alert);
    QAccessible::updateAccessibility(&spoken);
    if (player && !m_isMuted)
        player(answer.sound);
}

void DeskWindow::showTone()
{
    const int side = ui.lblAnswer->fontMetrics().height() * 3 / 2;
    ui.lblTone->setPixmap(Icons::icon(looks[m_tone].icon).pixmap(QSize(side, side), devicePixelRatioF()));
    ui.lblTone->setAccessibleName(looks[m_tone].meaning);
}

void DeskWindow::showState()
{
    const StockTake *count = m_desk.stockTake();
    QString who = m_desk.person();
    if (!m_desk.charge().isEmpty())
        who += (who.isEmpty() ? QString() : QStringLiteral(" - ")) + m_desk.charge();
    if (const qsizetype waiting = m_desk.toolsWaiting().size())
        who += QString("%1%2 waiting").arg(who.isEmpty() ? "" : " - ").arg(waiting);
    if (count)
        who = (m_desk.isShowingResult() ? "Result: " : "Count: ") + count->summary() + " - " + count->hereName();
    ui.lblWho->setText(who.isEmpty() ? QString("Nobody") : who);
    constexpr const char *directions[] = {"Out and In", "Out only", "In only"};
    ui.lblDirection->setText(directions[m_desk.direction()]);
    for (const char *name : {"cmdOut", "cmdIn", "cmdUndo", "cmdDone", "cmdCount", "cmdAside"})
        setCaption(name, button(name)->accessibleName().toLatin1());
    button("cmdOut")->setDown(m_desk.direction() == Desk::OutOnly);
    button("cmdIn")->setDown(m_desk.direction() == Desk::InOnly);
    setCaption("cmdSheet", m_desk.isShowingResult() ? "Print" : "Sheet");
    setCaption("cmdSound", m_isMuted ? "Sound Off" : "Sound On");

    const bool hasOffer = m_desk.offer() != Desk::Offer::None;
    ui.pnlOffer->setVisible(hasOffer || m_desk.isShowingResult());
    setCaption("cmdStore",
               m_desk.isShowingResult()                      ? "PDF"
                   : m_desk.offer() == Desk::Offer::TakeBack ? "Take Back"
                                                             : "Store Here");
    setCaption("cmdLeave", m_desk.isShowingResult() ? "CSV" : "Leave");
    button("cmdAside")->setVisible(m_desk.isShowingResult());
    if (m_page != Page::Choices)
        showPage(!count ? Page::Deeds : m_desk.isShowingResult() ? Page::Result : Page::Missing);
}

void DeskWindow::showChoices(const QList<Answer::Choice> &choices)
{
    m_choices = choices;
    if (!choices.isEmpty())
        showPage(Page::Choices);
    else if (m_page == Page::Choices)
        m_page = Page::Deeds; // or what showState() finds
}

void DeskWindow::showPage(Page page)
{
    const int scrolledTo = ui.lstLines->verticalScrollBar()->value();
    const int current = ui.lstLines->currentIndex().row();
    const qint64 currentId = page == Page::Missing && page == m_page && current >= 0 ? m_lines.row(current).id : 0;
    const bool isSame = page == m_page;
    m_page = page;
    QList<DeskList::Row> rows;
    QStringList headings;
    int stretched = 2;
    if (page == Page::Choices) {
        headings = QStringList{"Found", ""};
        stretched = 0;
        for (const Answer::Choice &choice : std::as_const(m_choices))
            rows.append(iconRow(choice.icon, {choice.text, choice.detail}));
    } else if (page == Page::Missing) {
        headings = QStringList{"Missing", "Tool", "Part Number", "Place"};
        stretched = 1;
        for (const StockTake::Tool &tool : m_desk.stockTake()->missing())
            rows.append(
                {{}, {}, {'T' + QString::number(tool.id), tool.description, tool.partNumber, tool.place}, tool.id});
    } else if (page == Page::Result) {
        headings = QStringList{"Result", "Label", "Tool", "Part Number", "Place or Person"};
        for (const StockTake::Line &line : m_desk.stockTake()->result())
            rows.append({{}, {}, {line.heading, line.number, line.description, line.partNumber, line.note}});
    }
    QAbstractItemModel *const model = page == Page::Deeds ? &m_deeds : &m_lines;
    // Who goes through the list stays at a line while others come and go; at its place, when it is the one that goes.
    const auto same = std::ranges::find(rows, currentId, &DeskList::Row::id);
    const int next = currentId != 0 && same != rows.end() ? int(same - rows.begin()) : current;
    if (page != Page::Deeds)
        m_lines.setContents(headings, std::move(rows), page == Page::Missing); // may be every tool of the crib
    if (ui.lstLines->model() != model)
        ui.lstLines->setModel(model);
    ui.lstLines->setAccessibleName(page == Page::Deeds ? QString("What was done") : headings[0]);
    for (int column = 0; column < model->columnCount(); ++column) {
        const QString heading = model->headerData(column, Qt::Horizontal).toString();
        const bool isSpare = heading == u"Part Number" || heading == u"What For";
        ui.lstLines->header()->setSectionHidden(column, isSpare && isSmall());
    }
    shareRoom(stretched);
    if (page == Page::Choices)
        ui.lstLines->setCurrentIndex(model->index(0, 0));
    else if (isSame && page != Page::Deeds)
        ui.lstLines->setCurrentIndex(model->index(qMin(next, model->rowCount() - 1), 0));
    if (isSame)
        ui.lstLines->verticalScrollBar()->setValue(scrolledTo);
}

// Short texts have the room that they need; long ones share what is left, and one of them has half a part more.
void DeskWindow::shareRoom(int stretchedColumn)
{
    const QAbstractItemView *const view = ui.lstLines;
    QHeaderView *const header = ui.lstLines->header();
    QList<std::pair<int, int>> wanted; // width, column
    for (int column = 0; column < header->count(); ++column)
        if (column != stretchedColumn && !header->isSectionHidden(column))
            wanted.append({qMax(view->sizeHintForColumn(column),
                                ui.lstLines->isHeaderHidden() ? 0 : header->sectionSizeHint(column)),
                           column});
    std::ranges::sort(wanted);
    header->setSectionResizeMode(QHeaderView::Fixed);
    header->setSectionResizeMode(stretchedColumn, QHeaderView::Stretch);
    int room = view->viewport()->width();
    for (qsizetype halves = 2 * wanted.size() + 3; const auto &[width, column] : wanted) {
        const int given = qMin(width, room * 2 / int(halves));
        halves -= 2;
        header->resizeSection(column, given);
        room -= given;
    }
}

// ---- keys that go to the list

void DeskWindow::steer(int key)
{
    const QAbstractItemModel *const model = ui.lstLines->model();
    const int row = ui.lstLines->currentIndex().row();
    const int page = qMax(1, ui.lstLines->viewport()->height() / qMax(1, ui.lstLines->sizeHintForRow(0)) - 1);
    int wanted = row;
    switch (key) {
    case Qt::Key_Return:
        if (m_page == Page::Choices)
            chooseCurrent();
        return;
    case Qt::Key_Space:
        if (m_page == Page::Missing && row >= 0)
            tick(row);
        return;
    case Qt::Key_Up:
        wanted = row - 1;
        break;
    case Qt::Key_Down:
        wanted = row + 1;
        break;
    case Qt::Key_PageUp:
        wanted = row - page;
        break;
    default:
        wanted = row + page;
    }
    ui.lstLines->setCurrentIndex(model->index(qBound(0, wanted, model->rowCount() - 1), 0));
}

void DeskWindow::chooseCurrent()
{
    const int row = ui.lstLines->currentIndex().row();
    if (row < 0 || row >= m_choices.size())
        return;
    const Code code = m_choices[row].code;
    showChoices({});
    take(m_desk.take(code));
}

void DeskWindow::tick(int row) { take(m_desk.tick(m_lines.row(row).id)); }

void DeskWindow::dismiss()
{
    closePreviews();
    if (m_page != Page::Choices)
        return;
    showChoices({});
    say({Answer::Done, "Nothing was chosen."});
    showState();
}

// ---- what buttons do

// A sheet that is looked at is not in the way of the next scan.
void DeskWindow::closePreviews()
{
    for (PreviewWindow *preview : findChildren<PreviewWindow *>())
        preview->close();
}

// What is scanned while a sheet or the manual is looked at, and is not typed into a box there, belongs into the field.
bool DeskWindow::eventFilter(QObject *watched, QEvent *event)
{
    auto *widget = event->type() == QEvent::KeyPress ? qobject_cast<QWidget *>(watched) : nullptr;
    if (!widget || widget->window() == this || QApplication::activeModalWidget() || QApplication::activePopupWidget()
        || qobject_cast<QLineEdit *>(QApplication::focusWidget()))
        return QWidget::eventFilter(watched, event);
    const auto *key = static_cast<QKeyEvent *>(event);
    const bool isCode = !key->text().isEmpty() && key->text()[0].isLetterOrNumber()
        && (key->modifiers() == Qt::NoModifier || key->modifiers() == Qt::ShiftModifier);
    const bool isEnd = key->key() == Qt::Key_Escape && qobject_cast<PreviewWindow *>(widget->window());
    if (!isCode && !isEnd)
        return QWidget::eventFilter(watched, event);
    closePreviews();
    activateWindow();
    ui.txtScan->setFocus();
    QApplication::sendEvent(ui.txtScan, event);
    return true;
}

void DeskWindow::toggleSound()
{
    m_isMuted = !m_isMuted;
    UserSettings::setValue(muteSetting, m_isMuted ? "1" : "0");
    showState();
}

void DeskWindow::primary()
{
    if (m_desk.isShowingResult())
        writeResult("pdf");
    else
        take(m_desk.accept());
}

void DeskWindow::secondary()
{
    if (m_desk.isShowingResult())
        writeResult("csv");
    else
        take(m_desk.leave());
}

void DeskWindow::putAside() { take(m_desk.putAside()); }

void DeskWindow::printSheet()
{
    if (m_desk.isShowingResult()) {
        printResult();
        return;
    }
    const QList<qint64> loans = m_desk.loansForSheet();
    if (loans.isEmpty()) {
        say({Answer::Attention, "Nothing was lent that a sheet could tell of."});
        return;
    }
    QStringList terms;
    for (const qint64 loan : loans)
        terms.append(QString("{CheckOutIn.ID} = %1").arg(loan));
    m_sheet->selectionFormula = terms.join(" or ");
    print(*m_sheet, QString("The hand-over sheet of %1 loans").arg(loans.size()));
}

void DeskWindow::printResult()
{
    m_result = std::make_unique<StockTakeReport>(*m_desk.stockTake(), this);
    print(m_result->control(), "The result");
}

void DeskWindow::print(ReportControl &report, const QString &what)
{
    const HourGlass busy;
    const bool hasPrinter = !QPrinterInfo::defaultPrinter().isNull();
    report.destination = hasPrinter ? ReportControl::toPrinter : ReportControl::toPreview;
    report.windowWidth = width() * 9 / 10;
    report.windowHeight = height() * 9 / 10;
    report.windowLeft = report.windowTop = 0;
    if (const int code = report.print())
        say({Answer::Refused,
             what + " was not printed. " + ModMain::reportErrorText(qint16(code)) + ' ' + report.lastDetail()});
    else if (hasPrinter)
        say({Answer::Done, what + " is printed."});
    else
        say({Answer::Attention, what + " is shown: there is no printer."});
}

void DeskWindow::writeResult(const char *ending)
{
    const HourGlass busy;
    m_result = std::make_unique<StockTakeReport>(*m_desk.stockTake(), this);
    QString name = m_desk.stockTake()->name();
    std::ranges::replace_if(
        name, [](QChar c) { return !c.isLetterOrNumber() && c != u' '; }, u'_');
    const QDir folder(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation));
    folder.mkpath(".");
    ReportControl &report = m_result->control();
    report.destination = ReportControl::toFile;
    report.outputFile = folder.filePath("Stock-take " + name + Clock::now().toString(" yyyy-MM-dd hhmmss.") + ending);
    const QString file = QDir::toNativeSeparators(report.outputFile);
    if (const int code = report.print())
        say({Answer::Refused,
             file + " was not written. " + ModMain::reportErrorText(qint16(code)) + ' ' + report.lastDetail()});
    else
        say({Answer::Done, "Written: " + file});
}

// ---- the window

bool DeskWindow::event(QEvent *event)
{
    if (event->type() == QEvent::WindowActivate)
        ui.txtScan->setFocus();
    return QWidget::event(event);
}

bool DeskWindow::isSmall() const { return width() < smallWidth; }

// Read from a step away, where there is room; on a small screen all of it is in sight.
void DeskWindow::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    const int gap = isSmall() ? 3 : style()->pixelMetric(QStyle::PM_LayoutVerticalSpacing);
    ui.windowLayout->setSpacing(gap);
    ui.windowLayout->setContentsMargins(gap, gap, gap, gap);
    ui.answerLayout->setContentsMargins(2 * gap, gap, 2 * gap, gap);
    ui.commandLayout->setSpacing(gap);
    ui.offerLayout->setSpacing(gap);
    ui.lstLines->setHeaderHidden(height() < smallHeight);
    const double base = font().pointSizeF();
    const double room = std::min(width() / 640.0, height() / 400.0);
    const auto enlarge = [&](QWidget *widget, double factor) {
        QFont larger = widget->font();
        larger.setPointSizeF(base * qBound(1.0, factor * room, factor * 1.6));
        widget->setFont(larger);
    };
    enlarge(ui.txtScan, 1.3);
    enlarge(ui.lblDirection, 1.1);
    enlarge(ui.lblWho, 1.8);
    enlarge(ui.lblAnswer, 1.3);
    enlarge(ui.lstLines, 1.05);
    for (QToolButton *each : findChildren<QToolButton *>())
        enlarge(each, 1.1);
    // Long words take a second line; what is below does not move for that.
    const int twoLines = 2 * ui.lblAnswer->fontMetrics().lineSpacing();
    ui.lblAnswer->setMinimumHeight(twoLines);
    ui.lblAnswer->setMaximumHeight(qMax(twoLines, height() / 4));
    showTone();
    showState();
}

void DeskWindow::closeEvent(QCloseEvent *event)
{
    if (m_desk.isWaiting()) {
        event->ignore();
        say({Answer::Waiting, "Not closed: scans still wait for the crib."});
        return;
    }
    UserSettings::setValue(placeSetting, saveGeometry());
}
