#pragma once

#include <QString>

#include <variant>

/// One field's value: empty (the engine's null), a whole number, a fraction or a text. A date and
/// time is text in the form "yyyy-mm-dd hh:mm:ss", a yes/no -1 or 0.
class Value
{
public:
    Value() = default;
    Value(int number) : m_value(qint64(number)) { }
    Value(qint64 number) : m_value(number) { }
    Value(double number) : m_value(number) { }
    Value(const QString &text) : m_value(text) { }

    bool isNull() const { return std::holds_alternative<std::monostate>(m_value); }
    bool isInteger() const { return std::holds_alternative<qint64>(m_value); }
    bool isText() const { return std::holds_alternative<QString>(m_value); }
    /// The value as the user reads it; empty for null.
    QString toText() const;
    /// A fraction is rounded, halves to the even neighbour. 0 for null and for a text that is no
    /// number.
    qint64 toInteger() const;
    double toNumber() const;
    bool toBool() const { return toNumber() != 0; }

    bool operator==(const Value &other) const = default;

private:
    std::variant<std::monostate, qint64, double, QString> m_value;
};
