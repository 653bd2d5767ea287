#include "platform/reportengine/Code128.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace {

// Widths of three bars and three gaps for each symbol value.
constexpr const char *patterns[] = {
    "212222", "222122", "222221", "121223", "121322", "131222", "122213", "122312", "132212", "221213", "221312",
    "231212", "112232", "122132", "122231", "113222", "123122", "123221", "223211", "221132", "221231", "213212",
    "223112", "312131", "311222", "321122", "321221", "312212", "322112", "322211", "212123", "212321", "232121",
    "111323", "131123", "131321", "112313", "132113", "132311", "211313", "231113", "231311", "112133", "112331",
    "132131", "113123", "113321", "133121", "313121", "211331", "231131", "213113", "213311", "213131", "311123",
    "311321", "331121", "312113", "312311", "332111", "314111", "221411", "431111", "111224", "111422", "121124",
    "121421", "141122", "141221", "112214", "112412", "122114", "122411", "142112", "142211", "241211", "221114",
    "413111", "241112", "134111", "111242", "121142", "121241", "114212", "124112", "124211", "411212", "421112",
    "421211", "212141", "214121", "412121", "111143", "111341", "131141", "114113", "114311", "411113", "411311",
    "113141", "114131", "311141", "411131", "211412", "211214", "211232"};
constexpr const char *stopPattern = "2331112";
constexpr int switchToPairs = 99;
constexpr int switchToCharacters = 100;
constexpr int startWithCharacters = 104;
constexpr int startWithPairs = 105;
constexpr int checkModulus = 103;

bool isDigit(QChar c) { return c >= '0' && c <= '9'; }

/// The symbols of `text`: pairs of digits share a symbol where at least four digits follow each other.
std::vector<int> symbolsOf(const QString &text)
{
    constexpr qsizetype worthPairing = 4;
    std::vector<int> symbols;
    bool inPairs = false;
    for (qsizetype at = 0; at < text.size();) {
        const auto end = std::find_if_not(text.begin() + at, text.end(), isDigit);
        const qsizetype digits = end - (text.begin() + at);
        const bool pairs = inPairs ? digits >= 2 : digits >= worthPairing;
        if (symbols.empty())
            symbols.push_back(pairs ? startWithPairs : startWithCharacters);
        else if (pairs != inPairs)
            symbols.push_back(pairs ? switchToPairs : switchToCharacters);
        inPairs = pairs;
        symbols.push_back(pairs ? text[at].digitValue() * 10 + text[at + 1].digitValue() : text[at].unicode() - ' ');
        at += pairs ? 2 : 1;
    }
    return symbols;
}

}

std::vector<int> Code128::encode(const QString &text)
{
    const auto isPrintable = [](QChar c) { return c >= ' ' && c <= '~'; };
    if (text.isEmpty() || !std::all_of(text.begin(), text.end(), isPrintable))
        return {};
    std::vector<int> symbols = symbolsOf(text);
    int check = symbols.front();
    for (size_t i = 1; i < symbols.size(); ++i)
        check = (check + int(i) * symbols[i]) % checkModulus;
    symbols.push_back(check);

    std::vector<int> widths;
    const auto append = [&](const char *pattern) {
        for (; *pattern; ++pattern)
            widths.push_back(*pattern - '0');
    };
    for (const int symbol : symbols)
        append(patterns[symbol]);
    append(stopPattern);
    return widths;
}

QList<QRectF> Code128::bars(const QString &text, const QRectF &area, Qt::Alignment alignment)
{
    const std::vector<int> widths = encode(text);
    const int modules = std::accumulate(widths.begin(), widths.end(), 2 * blankModules);
    const double first = std::ceil(area.left() / dot);
    const double room = std::floor(area.right() / dot) - first;
    const auto fitting = std::ranges::find_if(moduleWidths, [&](double module) { return modules * module <= room; });
    if (widths.empty() || fitting == std::end(moduleWidths))
        return {};

    const double spare = room - modules * *fitting;
    double left = first + blankModules * *fitting;
    if (alignment & Qt::AlignRight)
        left += std::floor(spare);
    else if (alignment & Qt::AlignHCenter)
        left += std::floor(spare / 2);
    QList<QRectF> bars;
    for (size_t i = 0; i < widths.size(); ++i) {
        const double width = widths[i] * *fitting;
        if (i % 2 == 0)
            bars.append({left * dot, area.top(), width * dot, area.height()});
        left += width;
    }
    return bars;
}
