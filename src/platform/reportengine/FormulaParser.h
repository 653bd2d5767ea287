#pragma once

#include "platform/reportengine/Formula.h"

#include <optional>

/// Reads a formula's text. Brackets are kept on a list of its own, so that no text can exhaust the stack.
class FormulaParser
{
public:
    FormulaParser(const QString &text, FieldList &fields, int line);
    /// @throws ReportError as Formula::parse() does.
    FormulaCondition parse();

private:
    /// An or-chain under construction; `all` is its last, still growing and-chain.
    struct Chain {
        FormulaCondition any;
        FormulaCondition all;
    };

    static FormulaCondition closed(Chain chain);
    FormulaCondition comparison();
    int field();
    FormulaCondition::Kind comparisonSign();
    FormulaConstant constant();
    FormulaConstant quotedText();
    FormulaConstant date();
    double number();
    int wholeNumber();

    void skipBlanks();
    bool takeWord(QLatin1StringView word);
    bool takeSign(QLatin1StringView sign);
    void expectSign(QLatin1StringView sign);
    [[noreturn]] void fail(int code, const QString &what) const;

    QStringView m_text;
    FieldList &m_fields;
    int m_line;
    qsizetype m_position = 0;
};
