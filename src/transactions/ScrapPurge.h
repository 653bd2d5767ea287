#pragma once

#include "platform/system/Progress.h"

#include <QStringList>

namespace MainSubs {

/// Deletes the scrap record `id` for good, with the loans of its tool. Each statement that fails is shown, the same
/// words once, and the next one is run all the same. True when all went well; false as well, with nothing done, unless
/// `kind` is "Tool".
bool PurgeScrapped(const QString &kind, qint32 id);

/// The same for several records, in one change, up to the first for which a statement fails: what holds this one back
/// holds back the next ones as well. @returns what to show; empty when all went well.
QStringList PurgeScrapped(const QList<qint32> &ids, const Progress &progress);

}
