#include "desk/Code.h"

#include "db/Schema.h"

#include <algorithm>

namespace {

constexpr int longestCode = 60;
constexpr int longestNumber = 18; // digits

bool isDigit(QChar character) { return character >= u'0' && character <= u'9'; }

// Characters that no keyboard types come of a bad reading; what is left of the code may be another one.
bool isReadable(const QString &text)
{
    return text.size() > 1 && text.size() <= longestCode
        && std::ranges::all_of(text, [](QChar c) { return c.isPrint() && c != QChar::ReplacementCharacter; });
}

// Bare digits that no tool's number has are a part number, as makers print it on their boxes.
Code numbered(const CodeForm &form, const QString &digits, const QString &text)
{
    const qint64 number = digits.size() > longestNumber ? -1 : digits.toLongLong();
    const bool isTool = number >= 0 && number <= Schema::highestToolNumber;
    if (*form.beginning == '\0' && !isTool)
        return {Code::Text, 0, text};
    return {form.kind, number, text};
}

}

std::span<const CodeForm> codeForms()
{
    static constexpr CodeForm forms[] = {
        {"T", true, Code::Tool},     {"", true, Code::Tool},       {"E", true, Code::Employee},
        {"J", true, Code::Job},      {"O", true, Code::Operation}, {"L", true, Code::Location},
        {"R", true, Code::Reason},   {"OUT", false, Code::Out},    {"IN", false, Code::In},
        {"UNDO", false, Code::Undo}, {"DONE", false, Code::Done},  {"COUNT", false, Code::Count},
    };
    return forms;
}

Code Code::of(const QString &scanned)
{
    const QString text = scanned.trimmed();
    if (text.isEmpty())
        return {};
    for (const CodeForm &form : codeForms()) {
        const QLatin1String beginning(form.beginning);
        if (!text.startsWith(beginning, Qt::CaseInsensitive))
            continue;
        const QString rest = text.mid(beginning.size());
        if (!form.isNumbered && rest.isEmpty())
            return {form.kind, 0, text};
        if (form.isNumbered && !rest.isEmpty() && rest.size() <= longestCode && std::ranges::all_of(rest, isDigit))
            return numbered(form, rest, text);
    }
    return {isReadable(text) ? Text : Unreadable, 0, text.left(longestCode)};
}

QString Code::label() const
{
    const auto form = std::ranges::find(codeForms(), kind, &CodeForm::kind);
    if (form == codeForms().end() || number < 0)
        return text;
    return QLatin1String(form->beginning) + (form->isNumbered ? QString::number(number) : QString());
}
