#pragma once

#include "desk/Answer.h"
#include "desk/Deed.h"
#include "desk/StockTake.h"
#include "desk/ToolAtHand.h"

#include <QHash>

#include <functional>
#include <optional>
#include <utility>

/// The counter without its window: takes what is scanned, does it in the crib and answers. Each deed is one
/// AtomicChange. A crib that others hold keeps no scan from being taken: those that cannot be done yet wait in their
/// order, and each is done once or refused in words.
class Desk
{
public:
    enum Direction { Either, OutOnly, InOnly };

    /// Takes a text that was scanned or typed.
    QList<Answer> scan(const QString &text);
    /// Takes a code whose meaning is known, as of a button or of something that was chosen.
    QList<Answer> take(const Code &code);

    /// Whether scans wait for the crib. goOn() tries them again; call it a few times a second.
    bool isWaiting() const { return !m_queue.isEmpty(); }
    QList<Answer> goOn();
    /// Ends the visit after five minutes of rest; to be asked now and then.
    QList<Answer> endVisitAtRest();

    Direction direction() const { return m_direction; }
    /// "MILLER ANNA" and "Job 12500"; empty where not known yet.
    const QString &person() const { return m_visit.person; }
    QString charge() const { return m_visit.charge ? m_visit.charge->text : QString(); }
    /// Tools that go out as soon as person and charge are known.
    const QList<ToolAtHand> &toolsWaiting() const { return m_visit.tools; }
    /// What was done since this was asked last, oldest first.
    QList<DeedLine> takeLines() { return std::exchange(m_lines, {}); }
    /// The loans of this visit, or of the last one when nothing was lent since; what a hand-over sheet tells of.
    QList<qint64> loansForSheet() const;

    // ---- stock-take
    const StockTake *stockTake() const { return m_stockTake ? &*m_stockTake : nullptr; }
    /// Ended, but not finished: its result is being looked at.
    bool isShowingResult() const { return m_isShowingResult; }
    /// What may be done about the tool that was scanned last: nothing, store it here, or take it back.
    enum class Offer { None, StoreHere, TakeBack };
    Offer offer() const { return m_offer; }
    /// Does what is offered; leave() does not.
    QList<Answer> accept();
    QList<Answer> leave();
    /// At the result: ends the count for today. What was seen is kept, and any desk may go on with it.
    QList<Answer> putAside();
    /// Counts a tool by hand, whose label is gone.
    QList<Answer> tick(qint64 tool);

private:
    struct Charge {
        qint32 jobOrOH = 0;
        qint32 lineItemTypeId = 0;
        QString text = {};
    };
    struct Visit {
        QString employee = {}; ///< Employee.EmpID
        QString person = {};
        std::optional<Charge> charge = {};
        QList<ToolAtHand> tools = {};
        QList<Deed> deeds = {};
        bool isEmpty() const { return employee.isEmpty() && !charge && tools.isEmpty() && deeds.isEmpty(); }
    };
    /// What a tool was scanned for. Settled by the first look, so that what others do meanwhile turns no lending into a
    /// taking back.
    enum class Intent { Unknown, Lend, TakeBack, HandOver, Wait };
    struct Scan {
        std::function<Answer(Scan &)> work;
        Code code = {};
        QDateTime when = {};
        bool hasWaited = false;
        Intent intent = Intent::Unknown;
        qint64 loanShown = 0;
    };

    /// What was offered when the key was pressed; the answer may have to wait for the crib.
    struct Question {
        Offer offer = Offer::None;
        ToolAtHand tool = {};
        qint32 here = 0;
    };

    QList<Answer> enter(const Code &code, std::function<Answer(Scan &)> work);
    bool isReadTwice(const Code &code, const QDateTime &now);
    Answer answerTo(Scan &scan);
    QList<Answer> giveUp();
    /// What became of the tools that waited so far, in words, once.
    QString takeRow();

    Answer tool(Scan &scan);
    std::optional<Answer> objection(const ToolAtHand &tool, const Scan &scan) const;
    /// Whether the person of this visit has it.
    bool hasAlready(const ToolAtHand &tool) const;
    Intent intentFor(const ToolAtHand &tool) const;
    /// Takes the tool back if it is out, lends it unless it only comes back: one deed.
    void change(const ToolAtHand &tool, Intent intent, qint64 loanShown);
    Answer lendWaiting(QString words);
    Answer employee(qint64 number);
    Answer charge(const Code &code);
    Answer location(qint64 number);
    Answer reason(qint64 number);
    Answer search(Scan &scan);
    Answer setDirection(Direction direction);
    Answer undo();
    Answer done();
    Answer count();
    Answer countLocation(qint64 location);
    Answer countTool(const Code &code);
    /// The answer to what a scan in a count turned out to be.
    Answer counted(const Code &code, const std::optional<ToolAtHand> &tool, StockTake::Result result);
    Answer countedBefore(const ToolAtHand &tool);
    Answer doOffered(const Question &question);
    void requireCount() const;
    void refreshCount();
    void leaveCount();
    /// Attention where tools stay behind.
    Answer endVisit();
    static Answer after(const Answer &ended, Answer answer);

    bool isComplete() const { return !m_visit.employee.isEmpty() && m_visit.charge; }
    void note(const Deed &deed, bool isUndone = false);

    Visit m_visit;
    QList<qint64> m_lastLoans; ///< of the visit before
    /// What became of the tools that waited, told when the scan that they waited for is done or given up.
    struct Row {
        QStringList lent = {}, refusals = {};
    };
    Row m_row;
    Direction m_direction = Either;
    QList<Scan> m_queue;
    QDateTime m_lastTouch;
    Code m_lastCode;
    QDateTime m_lastCodeAt;
    QList<DeedLine> m_lines;
    QHash<qint16, QString> m_ownMoments; ///< by tool, of the last loan or return that this desk stored

    std::optional<StockTake> m_stockTake;
    bool m_awaitsLocation = false; ///< COUNT was scanned
    bool m_isShowingResult = false;
    Offer m_offer = Offer::None;
    ToolAtHand m_offered; ///< as it was shown
};
