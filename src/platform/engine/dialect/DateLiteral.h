#pragma once

#include <QString>

namespace dialect {

/// A date, a time or both, as people write them ("3/4/2026", "2026-03-04 13:05", "Mar 4, 2026 1:05
/// PM"), in the stored form "yyyy-mm-dd hh:mm:ss"; empty where `text` is none. Month/day/year is
/// taken first, day/month/year where only that is a date. A time alone lies on 1899-12-30, the
/// day 0 of the suite's files.
QString storedDate(QStringView text);

}
