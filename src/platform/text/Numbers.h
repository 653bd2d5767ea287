#pragma once

#include <QString>

#include <optional>
#include <stdexcept>

/// A text that is no number where one is needed, or a number too large for its field.
class NumberError : public std::runtime_error
{
public:
    explicit NumberError(const QString &text) : std::runtime_error(text.toStdString()) { }
};

/// The number that the whole of `text` stands for, in any of the forms in which the suite's users
/// write one: "12", " -1.5 ", "1e3", "$12.50", "(3)" for -3, "1,234". Nothing for any other text,
/// the empty one among them.
std::optional<double> numberIn(QStringView text);

/// The suite's numeric test: anything that numberIn() can read passes.
bool isNumeric(const QString &text);

/// The number at the beginning of `text`, read up to the first character that cannot continue it;
/// blanks are skipped. 0 when there is none, so also for a text that begins with a currency sign.
double leadingNumber(const QString &text);

/// `text` as a 16-bit number, halves rounded to the even neighbour. @throws NumberError "Overflow"
/// outside -32768 to 32767, "Type mismatch" for no number.
qint16 toInteger(const QString &text);

/// `number` in 16 bits, as loans and trees hold numbers. @throws NumberError "Overflow" outside -32768 to 32767.
qint16 asInteger(qint64 number);

/// `text` as a 32-bit number, rounded and refused likewise.
qint32 toLong(const QString &text);
