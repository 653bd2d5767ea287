#include "transactions/AtomicChange.h"

#include "db/Session.h"

void refuseUnless(bool asShown, const QString &words)
{
    if (!asShown)
        throw Refusal(words);
}

AtomicChange AtomicChange::attempt(const std::function<void()> &steps)
{
    try {
        make(steps);
    } catch (const Refusal &refusal) {
        return {Refused, QString::fromUtf8(refusal.what())};
    } catch (const EngineError &error) {
        return {Failed, error.text(), error.number()};
    }
    return {};
}

void AtomicChange::make(const std::function<void()> &steps)
{
    Transaction transaction(Session::database());
    steps();
    transaction.commit();
}
