#include "desk/Desk.h"

#include "common/ItemId.h"
#include "db/Literals.h"
#include "db/Session.h"
#include "desk/Places.h"
#include "platform/system/Clock.h"
#include "platform/system/ProgramFolder.h"
#include "platform/text/Format.h"
#include "transactions/AtomicChange.h"
#include "transactions/LoanChoices.h"

#include <algorithm>

namespace {

constexpr int restSeconds = 5 * 60;
constexpr int longestWaitSeconds = 60;
constexpr qsizetype mostWaiting = 200; // scans
constexpr int mostFound = 100;

// A scanner that is held still reads a code again; whoever means it twice takes longer.
constexpr int milliSecondsOfOneTool = 3000;
constexpr int milliSecondsOfOneCommand = 1000;

bool isWithin(int milliSeconds, const QDateTime &before, const QDateTime &now)
{
    const qint64 passed = before.isValid() ? before.msecsTo(now) : -1;
    return passed >= 0 && passed < milliSeconds;
}

bool isSame(const Code &one, const Code &other) { return one.kind == other.kind && one.number == other.number; }

QString tools(qsizetype number) { return number == 1 ? QString("1 tool") : QString("%1 tools").arg(number); }

// Asked where the connection broke at the deed's end. The server may be storing it still: to be asked as a change,
// which waits for that.
bool isStored(const Deed &deed, const QString &employee, const QString &dateOut)
{
    if (deed.isLoan()) {
        const Lending::OpenLoan loan = Lending::openLoan(deed.toolId);
        return loan.id == deed.loan && loan.employeeNumber == employee && loan.dateOut == dateOut;
    }
    if (deed.returned.loans.isEmpty()) {
        const std::optional<ToolAtHand> tool = ToolAtHand::find(deed.toolId);
        return deed.isReturn() && tool && !tool->isOut;
    }
    const Recordset ended = openRecordset("Select ID from CheckOutIn where ID in (" + joined(deed.returned.loans)
                                          + ") and Active=0 and DateIn=#" + deed.returned.dateIn + "#");
    return ended.recordCount() == deed.returned.loans.size();
}

QString alreadyOut(const ToolAtHand &tool)
{
    return tool.name() + " is out already: " + tool.loan.holder() + " has it.";
}

// The words that people type; "*" and "?" are wildcards for them, too.
QString pattern(QString text) { return quoted(text.replace('[', "[[]").replace('#', "[#]")).chopped(1); }

}

// ---- taking scans, and answering in their order

QList<Answer> Desk::scan(const QString &text)
{
    const Code code = Code::of(text);
    return code.kind == Code::Nothing ? QList<Answer>() : take(code);
}

QList<Answer> Desk::take(const Code &code)
{
    return enter(code, [this](Scan &scan) { return answerTo(scan); });
}

QList<Answer> Desk::enter(const Code &code, std::function<Answer(Scan &)> work)
{
    QList<Answer> answers = endVisitAtRest();
    const QDateTime now = Clock::now();
    m_lastTouch = now;
    if (isReadTwice(code, now))
        return answers << Answer{Answer::Attention, code.label() + " was read twice, and counts once."};
    if (m_queue.size() >= mostWaiting)
        return answers << Answer{Answer::Refused,
                                 code.label() + " was not taken: too much waits for the crib already."};
    m_queue.append({.work = std::move(work), .code = code, .when = now});
    if (m_queue.size() == 1)
        return answers + goOn();
    m_queue.last().hasWaited = true;
    return answers << Answer{Answer::Waiting, code.label() + " is kept: the crib is held by somebody else."};
}

bool Desk::isReadTwice(const Code &code, const QDateTime &now)
{
    const bool isTool = code.kind == Code::Tool && !m_stockTake; // a count has an answer of its own
    const bool waits =
        isTool && std::ranges::any_of(m_queue, [&](const Scan &scan) { return isSame(scan.code, code); });
    const bool isAgain = (code.kind == Code::Undo || code.kind == Code::Done) && isSame(m_lastCode, code)
        && isWithin(milliSecondsOfOneCommand, m_lastCodeAt, now);
    m_lastCode = code;
    m_lastCodeAt = now;
    return waits || isAgain;
}

QList<Answer> Desk::goOn()
{
    QList<Answer> answers;
    while (!m_queue.isEmpty()) {
        try {
            answers.append(m_queue.first().work(m_queue.first()));
        } catch (const EngineError &error) {
            Scan &scan = m_queue.first();
            if (error.number() != EngineError::lockedFile) {
                const QString path = ProgramFolder::toNative(Session::database().path());
                const bool isGone = !ProgramFolder::fileExists(path);
                const bool isLost = error.number() == EngineError::connectionFailed; // its words tell what was stored
                const QString why = isGone ? "The crib's database is gone: " + path : error.text();
                answers.append({Answer::Refused,
                                takeRow() + scan.code.label()
                                    + (isLost ? ": the crib's server was not reached. " : " was not done. ") + why});
            } else if (scan.when.secsTo(Clock::now()) >= longestWaitSeconds) {
                return answers + giveUp();
            } else {
                if (!std::exchange(scan.hasWaited, true))
                    answers.append(
                        {Answer::Waiting, scan.code.label() + " is kept: the crib is held by somebody else. Scan on."});
                return answers;
            }
        } catch (const std::runtime_error &refusal) {
            answers.append({Answer::Refused, takeRow() + QString::fromUtf8(refusal.what())});
        }
        // Whoever was refused scans again at once.
        if (answers.last().tone == Answer::Refused && isSame(m_queue.first().code, m_lastCode))
            m_lastCode = {};
        m_queue.removeFirst();
    }
    return answers;
}

QList<Answer> Desk::giveUp()
{
    m_lastCode = {};
    QStringList labels;
    for (const Scan &scan : std::exchange(m_queue, {}))
        labels.append(scan.code.label());
    return {
        {Answer::Refused,
         takeRow() + "Somebody else holds the crib for too long. Not done, scan again: " + labels.join(", ") + '.'}};
}

QString Desk::takeRow()
{
    const auto [lent, refusals] = std::exchange(m_row, {});
    const QString out = lent.isEmpty() ? QString() : "Out: " + lent.join(", ") + ". ";
    return out + (refusals.isEmpty() ? QString() : refusals.join(' ') + ' ');
}

QList<Answer> Desk::endVisitAtRest()
{
    const bool isOver = m_queue.isEmpty() && !m_stockTake && m_lastTouch.isValid()
        && m_lastTouch.secsTo(Clock::now()) >= restSeconds && (!m_visit.isEmpty() || m_direction != Either);
    if (!isOver)
        return {};
    m_direction = Either;
    return {endVisit()};
}

Answer Desk::answerTo(Scan &scan)
{
    const Code &code = scan.code;
    m_offer = Offer::None;
    constexpr Code::Kind toWait[] = {Code::Location, Code::Text, Code::Count, Code::Done};
    m_awaitsLocation = m_awaitsLocation && std::ranges::find(toWait, code.kind) != std::end(toWait);
    if (m_isShowingResult && !code.isCommand())
        throw Refusal("This is the result of a count. Scan DONE to finish it, or COUNT to count on.");
    if (code.number < 0)
        throw Refusal("Nothing has so high a number. Read the label again.");
    switch (code.kind) {
    case Code::Tool:
        return m_stockTake ? countTool(code) : tool(scan);
    case Code::Location:
        return location(code.number);
    case Code::Count:
        return count();
    case Code::Done:
        return done();
    case Code::Undo:
        return undo();
    case Code::Text:
        return search(scan);
    case Code::Nothing:
    case Code::Unreadable:
        throw Refusal("That could not be read. Scan it again.");
    default:
        break;
    }
    if (m_stockTake)
        throw Refusal(m_stockTake->name() + " is being counted. Scan DONE first.");
    switch (code.kind) {
    case Code::Employee:
        return employee(code.number);
    case Code::Reason:
        return reason(code.number);
    case Code::Out:
        return setDirection(OutOnly);
    case Code::In:
        return setDirection(InOnly);
    default:
        return charge(code);
    }
}

// ---- lending and taking back

Answer Desk::tool(Scan &scan)
{
    const std::optional<ToolAtHand> tool = ToolAtHand::find(scan.code.number);
    if (!tool) {
        const bool isTyped = !scan.code.text.startsWith('T', Qt::CaseInsensitive); // who types a job forgets its letter
        throw Refusal(ToolAtHand::whyNot(scan.code.number) + (isTyped ? " A job begins with J, a badge with E." : ""));
    }
    if (scan.intent == Intent::Unknown) {
        if (const auto found = objection(*tool, scan))
            return *found;
        scan.intent = intentFor(*tool);
        scan.loanShown = tool->loan.id;
    }
    if (scan.intent == Intent::Wait) {
        m_visit.tools.append(*tool);
        const QString missing = !m_visit.employee.isEmpty() ? "a job or an operation"
            : m_visit.charge                                ? "a badge"
                                                            : "a badge and a job or an operation";
        return {Answer::Attention, tool->name() + " waits for " + missing + '.'};
    }
    const QString holder = tool->loan.holder(), name = tool->name();
    change(*tool, scan.intent, scan.loanShown);
    if (scan.intent == Intent::TakeBack)
        return {Answer::Done, name + " is back, from " + holder + '.'};
    const QString from = scan.intent == Intent::HandOver ? " from " + holder : QString();
    return {Answer::Done, name + " is out" + from + ": " + m_visit.person + ", " + m_visit.charge->text + '.'};
}

std::optional<Answer> Desk::objection(const ToolAtHand &tool, const Scan &scan) const
{
    // By others since it was scanned. What is stored for later was stored before, by a machine whose clock is ahead.
    const QString scanned = Format::generalDate(scan.when), soon = Format::generalDate(Clock::now().addSecs(1));
    const auto isMeanwhile = [&](const QString &moment) {
        return moment >= scanned && moment <= soon && moment != m_ownMoments.value(tool.id);
    };
    if (tool.isOut && isMeanwhile(tool.loan.dateOut))
        throw Refusal(tool.name() + " was checked out meanwhile, by " + tool.loan.holder() + '.');
    if (!tool.isOut && scan.hasWaited && m_direction != OutOnly) {
        Recordset returns = openRecordset("Select DateIn from CheckOutIn where Tool_Id=" + QString::number(tool.id)
                                          + " and Active=0 and DateIn>=#" + scanned + "#");
        for (; !returns.atEnd(); returns.moveNext())
            refuseUnless(!isMeanwhile(returns.field(0).toText()), tool.name() + " was checked in meanwhile.");
    }
    if (!tool.isOut && m_direction == InOnly)
        return Answer{Answer::Attention, tool.name() + " is in the crib already."};
    if (m_direction == OutOnly && hasAlready(tool))
        return Answer{Answer::Attention, alreadyOut(tool)};
    const auto last = std::ranges::find(m_visit.deeds.rbegin(), m_visit.deeds.rend(), tool.id, &Deed::toolId);
    if (last != m_visit.deeds.rend() && isWithin(milliSecondsOfOneTool, last->when, Clock::now()))
        return Answer{Answer::Attention, tool.name() + " was read twice, and counts once."};
    const auto isThis = [&](const ToolAtHand &other) { return other.id == tool.id; };
    if (!isComplete() && std::ranges::any_of(m_visit.tools, isThis))
        return Answer{Answer::Attention, tool.name() + " waits already."};
    return {};
}

bool Desk::hasAlready(const ToolAtHand &tool) const
{
    return tool.isOut && !m_visit.employee.isEmpty() && tool.loan.employeeNumber == m_visit.employee;
}

Desk::Intent Desk::intentFor(const ToolAtHand &tool) const
{
    if (tool.isOut && m_direction != OutOnly)
        return Intent::TakeBack;
    if (!isComplete())
        return Intent::Wait;
    return tool.isOut ? Intent::HandOver : Intent::Lend;
}

void Desk::change(const ToolAtHand &tool, Intent intent, qint64 loanShown)
{
    Deed deed{.when = Clock::now(), .toolId = tool.id, .tool = tool.name(), .partNumber = tool.partNumber};
    if (intent != Intent::Lend)
        deed.returnedFrom = {tool.loan.holder(),
                             tool.loan.id == 0 ? QString()
                                               : LoanChoices::chargeText(tool.loan.lineItemTypeId, tool.loan.jobOrOH)};
    if (intent != Intent::TakeBack)
        deed.lentTo = {m_visit.person, m_visit.charge->text};
    QString moment; // of the loan
    const auto steps = [&] {
        if (intent != Intent::Lend)
            deed.returned = Lending::takeBack(tool.id, loanShown);
        if (intent == Intent::TakeBack)
            return;
        Lending::lend({.toolId = tool.id,
                       .jobOrOH = m_visit.charge->jobOrOH,
                       .lineItemTypeId = m_visit.charge->lineItemTypeId,
                       .employee = m_visit.employee});
        const Lending::OpenLoan made = Lending::openLoan(tool.id);
        deed.loan = made.id;
        moment = made.dateOut;
    };
    try {
        AtomicChange::make(steps);
    } catch (const EngineError &error) {
        if (error.number() != EngineError::connectionFailed)
            throw;
        bool isDone = false;
        try {
            AtomicChange::make([&] { isDone = isStored(deed, m_visit.employee, moment); });
        } catch (const EngineError &) {
            throw Refusal(deed.tool + ": " + error.text());
        }
        refuseUnless(isDone, deed.tool + " was not done: the connection to the crib was lost. Scan it again.");
    }
    m_visit.tools.removeIf([&](const ToolAtHand &waiting) { return waiting.id == deed.toolId; });
    m_ownMoments[tool.id] = moment.isEmpty() ? deed.returned.dateIn : moment;
    m_visit.deeds.append(deed);
    note(deed);
}

void Desk::note(const Deed &deed, bool isUndone)
{
    const auto line = [&](int icon, const char *what, const Deed::Side &side) {
        m_lines.append({.when = Clock::now(),
                        .icon = icon,
                        .what = (isUndone ? "Undone: " : "") + QString(what),
                        .tool = deed.tool,
                        .partNumber = deed.partNumber,
                        .side = side});
    };
    if (deed.isReturn())
        line(ItemIcon::toolInStock, "Back", deed.returnedFrom);
    if (deed.isLoan())
        line(ItemIcon::toolOut, "Out", deed.lentTo);
    if (deed.isMove())
        line(ItemIcon::folder, "Moved", deed.lentTo);
}

// The tools leave the row one by one, each when its deed is done, so that a crib which is held in between loses none
// and lends none twice.
Answer Desk::lendWaiting(QString words)
{
    if (m_visit.tools.isEmpty() || !isComplete())
        return {m_visit.tools.isEmpty() ? Answer::Done : Answer::Attention, words};
    auto &[lent, refusals] = m_row;
    while (!m_visit.tools.isEmpty()) {
        const ToolAtHand shown = m_visit.tools.first();
        try {
            const std::optional<ToolAtHand> tool = ToolAtHand::find(shown.id);
            if (!tool)
                throw Refusal(ToolAtHand::whyNot(shown.id));
            if (tool->isOut && shown.loan.id != tool->loan.id)
                throw Refusal(shown.name() + " was checked out meanwhile, by " + tool->loan.holder() + '.');
            refuseUnless(!hasAlready(*tool), alreadyOut(*tool));
            change(*tool, tool->isOut ? Intent::HandOver : Intent::Lend, tool->loan.id);
            lent.append(shown.name());
        } catch (const Refusal &refusal) {
            refusals.append(QString::fromUtf8(refusal.what()));
            m_visit.tools.removeFirst();
        } catch (const EngineError &error) {
            if (error.number() == EngineError::lockedFile)
                throw;
            refusals.append(shown.name() + " was not lent. " + error.text()
                            + " What waits goes out when it, or the badge, is scanned again.");
            break;
        }
    }
    const QString out = lent.size() == 1 ? lent[0] + " is out: " : tools(lent.size()) + " are out: ";
    words =
        (lent.isEmpty() ? QString() : out + m_visit.person + ", " + m_visit.charge->text + ". ") + refusals.join(' ');
    const bool isWhole = refusals.isEmpty();
    m_row = {};
    return {isWhole ? Answer::Done : Answer::Refused, words.trimmed()};
}

// ---- who and what for

Answer Desk::employee(qint64 number)
{
    const QString empId = QString::number(number);
    const Recordset found = openRecordset(LoanChoices::employees("empid=" + empId));
    if (found.isEmpty()) {
        const Recordset known = openRecordset("Select LastName,FirstName from Employee where EmpID=" + empId);
        throw Refusal(known.isEmpty() ? "There is no employee E" + empId + '.'
                                      : known.text(u"LastName") + ' ' + known.text(u"FirstName")
                              + " is no active employee any more.");
    }
    Answer ended;
    if (const QString bound = found.text(u"empid"); bound != m_visit.employee) {
        if (!m_visit.employee.isEmpty())
            ended = endVisit();
        m_visit.employee = bound;
        m_visit.person = found.text(u"Name");
    }
    const QString charged = m_visit.charge ? ", " + m_visit.charge->text : QString(": scan a job or an operation");
    return after(ended, lendWaiting(m_visit.person + charged + '.'));
}

Answer Desk::charge(const Code &code)
{
    const bool isJob = code.kind == Code::Job;
    const QString number = QString::number(code.number);
    const Recordset found = openRecordset(isJob ? LoanChoices::jobs("Jobno=" + number)
                                                : LoanChoices::operations("Description", "OperNo=" + number));
    if (found.isEmpty())
        throw Refusal(isJob ? "There is no open job " + number + '.'
                            : "There is no overhead operation " + number + '.');
    const QString shown = found.text(isJob ? u"Jobno" : u"Description");
    Charge charge{.jobOrOH = Lending::chargedNumber(shown, number), .text = isJob ? "Job " + shown : shown};
    for (Recordset kinds = openRecordset(LoanChoices::chargeKinds()); !kinds.atEnd(); kinds.moveNext())
        if (kinds.text(u"Code") == (isJob ? "Job" : "Overhead"))
            charge.lineItemTypeId = qint32(kinds.field(u"Index").toInteger());
    m_visit.charge = charge;
    return lendWaiting(
        (m_visit.employee.isEmpty() ? charge.text + ": scan a badge" : m_visit.person + ", " + charge.text) + '.');
}

Answer Desk::location(qint64 number)
{
    if (number != qint32(number))
        throw Refusal("There is no location of so high a number.");
    if (m_awaitsLocation || m_stockTake)
        return countLocation(number);
    const Places places;
    if (!places.contains(qint32(number)))
        throw Refusal("There is no location L" + QString::number(number) + '.');
    const Recordset held = openRecordset("Select Count(*) as cnt from Tools where Location=" + QString::number(number));
    return {Answer::Attention,
            places.path(qint32(number)) + ": " + tools(held.field(0).toInteger())
                + ". To count them, scan COUNT first."};
}

Answer Desk::reason(qint64 number)
{
    const Recordset found = openRecordset("Select Description from ScrapReasons where ID=" + QString::number(number));
    if (found.isEmpty())
        throw Refusal("There is no scrap reason R" + QString::number(number) + '.');
    return {Answer::Attention,
            "Scrap reason " + found.text(u"Description") + ": tools are scrapped in the tool explorer."};
}

Answer Desk::search(Scan &scan)
{
    const QString text = scan.code.text;
    QList<Answer::Choice> found;
    const auto addTools = [&](const QString &condition) {
        Recordset rows = openRecordset("Select ID,Description,PartNumber,Out from Tools where " + condition
                                       + " order by Description,ID");
        for (; !rows.atEnd() && found.size() < mostFound; rows.moveNext())
            found.append({{Code::Tool, rows.field(0).toInteger()},
                          'T' + rows.field(0).toText() + ' ' + rows.field(1).toText(),
                          rows.field(2).toText(),
                          rows.field(3).toBool() ? ItemIcon::toolOut : ItemIcon::toolInStock});
    };
    if (m_awaitsLocation) {
        const Places places;
        Recordset rows = openRecordset("Select ID from Locations where Description like '*" + pattern(text).mid(1)
                                       + "*' order by Description,ID");
        for (; !rows.atEnd() && found.size() < mostFound; rows.moveNext())
            found.append({{Code::Location, rows.field(0).toInteger()},
                          places.path(qint32(rows.field(0).toInteger())),
                          'L' + rows.field(0).toText(),
                          ItemIcon::folder});
        refuseUnless(!found.isEmpty(), '"' + text + "\" is no location. Scan the one to count, or DONE.");
    } else {
        addTools("PartNumber=" + quoted(text));
        if (found.isEmpty())
            addTools("PartNumber like " + pattern(text) + "*'");
        if (found.isEmpty())
            addTools("Description like '*" + pattern(text).mid(1) + "*'");
    }
    if (found.isEmpty() && !m_stockTake) {
        Recordset rows = openRecordset(LoanChoices::employees("LastName like " + pattern(text) + "*'"));
        for (; !rows.atEnd() && found.size() < mostFound; rows.moveNext())
            found.append(
                {{Code::Employee, rows.field(0).toInteger()}, rows.field(1).toText(), 'E' + rows.field(0).toText()});
    }
    if (found.size() > 1)
        return {Answer::Attention, QString("\"%1\" may be several things. Choose one.").arg(text), found};
    if (found.size() == 1) {
        scan.code = found[0].code;
        return answerTo(scan);
    }
    if (m_stockTake)
        return countTool(scan.code);
    throw Refusal('"' + text + "\" is no code, no part number, no description and no name.");
}

Answer Desk::setDirection(Direction direction)
{
    m_direction = direction;
    if (direction == OutOnly)
        return {Answer::Done, "Out: every tool goes out, until DONE."};
    const QString words = "In: every tool comes back, until DONE.";
    const qsizetype left = std::exchange(m_visit.tools, {}).size();
    if (left == 0)
        return {Answer::Done, words};
    return {Answer::Attention, words + " Not lent, and waiting no more: " + tools(left) + '.'};
}

// ---- ends

// What a visit left behind is said before the answer to the scan that ended it.
Answer Desk::after(const Answer &ended, Answer answer)
{
    if (ended.tone == Answer::Attention)
        answer = {std::max(answer.tone, Answer::Attention), ended.words + ' ' + answer.words};
    return answer;
}

Answer Desk::endVisit()
{
    m_lastLoans = loansForSheet();
    const Visit ended = std::exchange(m_visit, {});
    const auto out = std::ranges::count_if(ended.deeds, &Deed::isLoan);
    const auto back =
        std::ranges::count_if(ended.deeds, [](const Deed &deed) { return deed.isReturn() && !deed.isLoan(); });
    QString words =
        (ended.person.isEmpty() ? QString("Done") : ended.person) + QString(": %1 out, %2 back.").arg(out).arg(back);
    if (!ended.tools.isEmpty())
        words += " Not lent, nobody was named or nothing charged: " + tools(ended.tools.size()) + '.';
    return {ended.tools.isEmpty() ? Answer::Done : Answer::Attention, words};
}

Answer Desk::done()
{
    if (m_awaitsLocation && !m_stockTake) {
        m_awaitsLocation = false;
        return {Answer::Done, "Nothing is counted."};
    }
    m_awaitsLocation = false;
    if (m_stockTake) {
        m_stockTake->refresh(StockTake::Anew);
        const QString words = m_stockTake->name() + ": " + m_stockTake->summary() + '.';
        if (!std::exchange(m_isShowingResult, true))
            return {Answer::Attention, words + " Print it; DONE again finishes it, COUNT counts on."};
        m_stockTake->finish();
        leaveCount();
        return {Answer::Done, words + " The count is finished."};
    }
    m_direction = Either;
    if (m_visit.isEmpty())
        return {Answer::Done, "Ready."};
    return endVisit();
}

QList<qint64> Desk::loansForSheet() const
{
    QList<qint64> loans;
    for (const Deed &deed : m_visit.deeds)
        if (deed.isLoan())
            loans.append(deed.loan);
    return loans.isEmpty() ? m_lastLoans : loans;
}

Answer Desk::undo()
{
    if (m_visit.deeds.isEmpty() && !m_visit.tools.isEmpty()) {
        const ToolAtHand tool = m_visit.tools.takeLast();
        return {Answer::Done, tool.name() + " waits no more."};
    }
    if (m_visit.deeds.isEmpty())
        return {Answer::Attention, "This visit has nothing to undo."};
    const Deed deed = m_visit.deeds.last();
    if (!deed.mark.isEmpty()) {
        m_stockTake->refresh();
        m_stockTake->remove(deed.mark);
        m_visit.deeds.removeLast();
        return {Answer::Done, deed.tool + " is not counted after all."};
    }
    std::optional<Places> places;
    if (deed.isMove())
        places.emplace();
    try {
        AtomicChange::make([&] {
            if (deed.isLoan())
                Lending::undoLoan(deed.toolId, deed.loan);
            if (deed.isReturn())
                Lending::undoReturn(deed.returned);
            if (places)
                places->move(deed.toolId, deed.movedTo, deed.movedFrom);
        });
    } catch (const Refusal &refusal) {
        m_visit.deeds.removeLast(); // it will not be possible later either; the one before may be
        throw Refusal(deed.tool + " was not undone. " + QString::fromUtf8(refusal.what()));
    }
    m_visit.deeds.removeLast();
    note(deed, true);
    const QString key = QString::number(deed.toolId);
    if (auto mark = m_stockTake ? m_stockTake->markOf(key) : std::nullopt) {
        mark->result = deed.isMove() ? StockTake::Elsewhere : StockTake::Out;
        mark->note = places ? places->path(deed.movedFrom) : deed.returnedFrom.who;
        m_stockTake->put(key, *mark);
        refreshCount();
    }
    return {Answer::Done, "Undone: " + deed.tool + '.'};
}
