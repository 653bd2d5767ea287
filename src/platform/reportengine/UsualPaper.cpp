#include "platform/reportengine/UsualPaper.h"

#include <algorithm>

namespace {

std::function<QPageSize()> asked = [] { return QPageSize(QPageSize::Letter); };

}

QPageSize UsualPaper::size() { return asked(); }

void UsualPaper::ask(std::function<QPageSize()> size) { asked = std::move(size); }

QPageSize UsualPaper::in(QLocale::Territory territory)
{
    // Those of the Unicode consortium's locale data
    static constexpr QLocale::Territory withLetter[] = {
        QLocale::AnyTerritory, QLocale::Belize,      QLocale::Canada,     QLocale::Chile,        QLocale::Colombia,
        QLocale::CostaRica,    QLocale::ElSalvador,  QLocale::Guatemala,  QLocale::Mexico,       QLocale::Nicaragua,
        QLocale::Panama,       QLocale::Philippines, QLocale::PuertoRico, QLocale::UnitedStates, QLocale::Venezuela,
    };
    const bool isLetter = std::find(std::begin(withLetter), std::end(withLetter), territory) != std::end(withLetter);
    return QPageSize(isLetter ? QPageSize::Letter : QPageSize::A4);
}

QPageSize UsualPaper::ofLocale()
{
    for (const char *variable : {"LC_ALL", "LC_PAPER"})
        if (!qEnvironmentVariableIsEmpty(variable))
            return in(QLocale(qEnvironmentVariable(variable)).territory());
    return in(QLocale::system().territory());
}
