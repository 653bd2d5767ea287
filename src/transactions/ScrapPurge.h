#pragma once

#include <QString>

namespace MainSubs {

/// Deletes the scrap record `id` for good, with the loans of its tool. Each statement that fails is shown, the same
/// words once, and the next one is run all the same. True when all went well; false as well, with nothing done, unless
/// `kind` is "Tool". Whoever deletes several records stops at the first false: what stopped this one stops the next.
bool PurgeScrapped(const QString &kind, qint32 id);

}
