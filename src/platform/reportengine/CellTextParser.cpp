#include "platform/reportengine/CellTextParser.h"

QList<TextPiece> CellTextParser::parse(QStringView text)
{
    QList<TextPiece> pieces;
    QString literal;
    const auto endLiteral = [&] {
        if (!literal.isEmpty())
            pieces.append({TextPiece::Literal, std::exchange(literal, {})});
    };
    while (!text.isEmpty()) {
        const qsizetype brace = text.indexOf('{');
        literal += text.first(brace < 0 ? text.size() : brace);
        if (brace < 0)
            break;
        text = text.sliced(brace + 1);
        if (text.startsWith('{')) {
            literal += '{';
            text = text.sliced(1);
            continue;
        }
        const qsizetype end = text.indexOf('}');
        if (end < 0)
            fail(QStringLiteral("\"{\" without \"}\""));
        endLiteral();
        pieces.append(piece(text.first(end).trimmed()));
        pieces.last().line = m_line;
        text = text.sliced(end + 1);
    }
    endLiteral();
    return pieces;
}

TextPiece CellTextParser::piece(QStringView inner)
{
    if (inner.startsWith('#'))
        return special(inner.sliced(1));
    if (inner.startsWith('?'))
        return parameter(inner.sliced(1));

    const qsizetype colon = inner.indexOf(':');
    const QStringView what = colon < 0 ? inner : inner.first(colon).trimmed();
    const qsizetype bracket = what.indexOf('(');
    TextPiece piece;
    if (bracket < 0)
        piece = {TextPiece::FieldValue, {}, m_template.fieldCalled(what, m_line, true)};
    else if (what.endsWith(')'))
        piece = aggregate(what.first(bracket).trimmed(), what.sliced(bracket + 1).chopped(1).trimmed());
    else
        fail(QStringLiteral("\"(\" without \")\""));
    if (colon >= 0) {
        const QStringView name = inner.sliced(colon + 1).trimmed();
        const std::optional<FieldFormat> format = FieldFormat::fromName(name);
        if (!format)
            fail(QStringLiteral("unknown format \"%1\"").arg(name));
        piece.format = *format;
    }
    return piece;
}

TextPiece CellTextParser::special(QStringView name) const
{
    static constexpr std::pair<QLatin1StringView, TextPiece::Kind> specials[] = {
        {QLatin1StringView("page"), TextPiece::PageNumber}, {QLatin1StringView("pages"), TextPiece::PageCount},
        {QLatin1StringView("today"), TextPiece::Today},     {QLatin1StringView("now"), TextPiece::Now},
        {QLatin1StringView("rows"), TextPiece::RowCount},   {QLatin1StringView("continued"), TextPiece::Continued},
    };
    for (const auto &[known, kind] : specials)
        if (name == known)
            return {kind, QString()};
    fail(QStringLiteral("unknown text {#%1}").arg(name));
}

TextPiece CellTextParser::parameter(QStringView name)
{
    const QString parameter = name.toString();
    if (!m_template.parameters.contains(parameter))
        m_template.parameters.insert(parameter, m_line);
    return {TextPiece::Parameter, parameter};
}

TextPiece CellTextParser::aggregate(QStringView function, QStringView argument)
{
    static constexpr std::pair<QLatin1StringView, Aggregate::Function> functions[] = {
        {QLatin1StringView("count"), Aggregate::Count}, {QLatin1StringView("sum"), Aggregate::Sum},
        {QLatin1StringView("min"), Aggregate::Minimum}, {QLatin1StringView("max"), Aggregate::Maximum},
        {QLatin1StringView("avg"), Aggregate::Average},
    };
    for (const auto &[known, meaning] : functions) {
        if (function.compare(known, Qt::CaseInsensitive) != 0)
            continue;
        Aggregate aggregate{meaning, -1, m_level, m_line};
        if (meaning != Aggregate::Count || !argument.isEmpty())
            aggregate.field = m_template.fieldCalled(argument, m_line, meaning != Aggregate::Count);
        const qsizetype found = m_template.aggregates.indexOf(aggregate);
        if (found < 0)
            m_template.aggregates.append(aggregate);
        return {TextPiece::AggregateValue, {}, int(found < 0 ? m_template.aggregates.size() - 1 : found)};
    }
    fail(QStringLiteral("unknown function %1()").arg(function));
}

void CellTextParser::fail(const QString &what) const { throw templateError(m_template.fileName, m_line, what); }
