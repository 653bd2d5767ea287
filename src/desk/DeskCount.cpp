#include "common/ItemId.h"
#include "desk/Desk.h"
#include "desk/Places.h"
#include "platform/engine/EngineError.h"
#include "platform/system/Clock.h"
#include "transactions/AtomicChange.h"

// What the desk does in a count of a location.

namespace {

QString belongsTo(const QString &place) { return "belongs to " + place + ". Store it here, or leave it."; }

QString outOnLoan(const ToolAtHand &tool)
{
    return "out on loan to " + tool.loan.holder() + ". Take it back, or leave it.";
}

}

Answer Desk::count()
{
    if (std::exchange(m_isShowingResult, false))
        return {Answer::Done, "Count on: " + m_stockTake->summary() + '.'};
    m_awaitsLocation = true;
    Answer answer{Answer::Attention, "Scan the location to count."};
    const Places places;
    for (const qint32 location : StockTake::unfinished())
        if (places.contains(location) && !(m_stockTake && m_stockTake->location() == location))
            answer.choices.append(
                {{Code::Location, location}, places.path(location), "not finished", ItemIcon::folder});
    if (!answer.choices.isEmpty())
        answer.words += " Or go on with one that is not finished.";
    return answer;
}

Answer Desk::countLocation(qint64 location)
{
    if (m_stockTake && (!m_awaitsLocation || m_stockTake->location() == location)) {
        m_awaitsLocation = false;
        m_stockTake->goTo(qint32(location));
        return {Answer::Done, "Here is " + m_stockTake->hereName() + '.'};
    }
    StockTake begun = StockTake::at(qint32(location));
    const Answer ended = m_visit.isEmpty() ? Answer() : endVisit();
    m_stockTake = std::move(begun);
    m_awaitsLocation = false;
    m_direction = Either;
    return after(ended, {Answer::Done, m_stockTake->name() + ": " + m_stockTake->summary() + '.'});
}

Answer Desk::countTool(const Code &code)
{
    const std::optional<ToolAtHand> tool = code.kind == Code::Tool ? ToolAtHand::find(code.number) : std::nullopt;
    m_stockTake->refresh();
    return counted(code, tool, m_stockTake->look(code, tool));
}

Answer Desk::counted(const Code &code, const std::optional<ToolAtHand> &tool, StockTake::Result result)
{
    const QString key = code.kind == Code::Tool ? QString::number(code.number) : code.text;
    const QString name = tool ? tool->name() : code.label();
    if (result == StockTake::Already) {
        const StockTake::Result before = m_stockTake->markOf(key)->result;
        const bool isOpen = tool && (before == StockTake::Elsewhere || before == StockTake::Out);
        return isOpen ? countedBefore(*tool)
                      : Answer{Answer::Attention, name + " is counted already.", {}, Answer::SoundAlready};
    }
    StockTake::Mark mark{.result = result};
    if (tool) {
        mark.description = tool->description;
        mark.partNumber = tool->partNumber;
    } else {
        mark.description = code.label();
    }
    Answer answer;
    Offer offer = Offer::None;
    switch (result) {
    case StockTake::Elsewhere:
        mark.note = Places().path(tool->location);
        answer = {Answer::Attention, name + ' ' + belongsTo(mark.note), {}, Answer::SoundElsewhere};
        offer = Offer::StoreHere;
        break;
    case StockTake::Out:
        mark.note = tool->loan.holder();
        answer = {Answer::Attention, name + " is " + outOnLoan(*tool), {}, Answer::SoundOut};
        offer = Offer::TakeBack;
        break;
    case StockTake::Scrapped:
        answer = {Answer::Refused, ToolAtHand::whyNot(code.number), {}, Answer::SoundScrapped};
        break;
    case StockTake::Unknown:
        answer = {Answer::Refused, name + " is unknown. Put it aside; it is noted.", {}, Answer::SoundUnknown};
        break;
    default:
        answer = {Answer::Done, name + (result == StockTake::Ticked ? " is ticked." : " is right here.")};
    }
    m_stockTake->put(key, mark);
    m_visit.deeds.append({.when = Clock::now(), .tool = name, .mark = key});
    m_offer = offer;
    m_offered = tool.value_or(ToolAtHand());
    return answer;
}

// Left as it was, it is offered again: as it is by then.
Answer Desk::countedBefore(const ToolAtHand &tool)
{
    m_offered = tool;
    QString words = tool.name() + " is counted already";
    const Places places;
    if (tool.isOut) {
        m_offer = Offer::TakeBack;
        words += ", " + outOnLoan(tool);
    } else if (!places.within(m_stockTake->here()).contains(tool.location)) {
        m_offer = Offer::StoreHere;
        words += ", and " + belongsTo(places.path(tool.location));
    } else {
        words += '.';
    }
    return {Answer::Attention, words, {}, Answer::SoundAlready};
}

QList<Answer> Desk::accept()
{
    if (m_offer == Offer::None || !m_stockTake)
        return {};
    const Question question{std::exchange(m_offer, Offer::None), m_offered, m_stockTake->here()};
    return enter({Code::Text, 0, m_offered.name()}, [this, question](Scan &) { return doOffered(question); });
}

QList<Answer> Desk::leave()
{
    if (std::exchange(m_offer, Offer::None) == Offer::None)
        return {};
    return {{Answer::Done, m_offered.name() + " stays as it is."}};
}

// What the question named is done, or nothing: the loan and the place that were shown.
Answer Desk::doOffered(const Question &question)
{
    requireCount();
    const auto [offer, tool, here] = question;
    const QString key = QString::number(tool.id);
    StockTake::Mark mark = m_stockTake->markOf(key).value_or(StockTake::Mark());
    const Places places;
    if (offer == Offer::TakeBack) {
        change(tool, Intent::TakeBack, tool.loan.id);
        const bool isElsewhere = !places.within(here).contains(tool.location);
        mark.result = isElsewhere ? StockTake::Elsewhere : StockTake::TakenBack;
        mark.note = isElsewhere ? places.path(tool.location) : mark.note;
        m_offer = isElsewhere ? Offer::StoreHere : Offer::None;
        m_offered = tool;
        m_stockTake->put(key, mark);
        refreshCount();
        const QString words = tool.name() + " is back, from " + tool.loan.holder() + '.';
        if (!isElsewhere)
            return {Answer::Done, words};
        return {Answer::Attention, words + " It " + belongsTo(mark.note), {}, Answer::SoundElsewhere};
    }
    AtomicChange::make([&] { places.move(tool.id, tool.location, here); });
    const Deed deed{.when = Clock::now(),
                    .toolId = tool.id,
                    .tool = tool.name(),
                    .partNumber = tool.partNumber,
                    .lentTo = {{}, places.name(here)},
                    .movedFrom = tool.location,
                    .movedTo = here};
    m_visit.deeds.append(deed);
    note(deed);
    mark.result = StockTake::Stored;
    m_stockTake->put(key, mark);
    refreshCount();
    return {Answer::Done, tool.name() + " belongs to " + places.path(here) + " from now on."};
}

void Desk::leaveCount()
{
    m_stockTake.reset();
    m_isShowingResult = false;
    m_visit = {};
}

// After a deed, which must not be tried again because of what is only shown: the next scan reads it.
void Desk::refreshCount()
{
    try {
        m_stockTake->refresh();
    } catch (const EngineError &) {
    }
}

// What was ticked or answered while the crib was held may come after the count's end.
void Desk::requireCount() const { refuseUnless(m_stockTake.has_value(), "The count was finished meanwhile."); }

QList<Answer> Desk::tick(qint64 tool)
{
    return enter({Code::Text, 0, 'T' + QString::number(tool)}, [this, tool](Scan &) {
        m_offer = Offer::None;
        requireCount();
        const Code code{Code::Tool, tool};
        const std::optional<ToolAtHand> found = ToolAtHand::find(tool);
        m_stockTake->refresh();
        StockTake::Result result = m_stockTake->look(code, found);
        // Without a label nobody says where it lies: what is listed is ticked, in whichever drawer it belongs.
        if (result == StockTake::Right
            || (result == StockTake::Elsewhere && Places().within(m_stockTake->location()).contains(found->location)))
            result = StockTake::Ticked;
        return counted(code, found, result);
    });
}

QList<Answer> Desk::putAside()
{
    if (!m_isShowingResult)
        return {};
    return enter({Code::Text, 0, "Put aside"}, [this](Scan &) {
        requireCount();
        const QString words = m_stockTake->name() + ": " + m_stockTake->summary();
        leaveCount();
        return Answer{Answer::Done, words + ". The count is put aside; COUNT goes on with it."};
    });
}
