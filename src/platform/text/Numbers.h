#pragma once

#include <QString>

#include <stdexcept>

/// A text that is no number where one is needed, or a number too large for its field.
class NumberError : public std::runtime_error
{
public:
    explicit NumberError(const QString &text) : std::runtime_error(text.toStdString()) { }
};

/// The suite's numeric test: anything that converts to a number passes, such as "12", " -1.5 ",
/// "1e3", "$12.50",
/// "(3)", "1,234"; the empty text does not.
bool isNumeric(const QString &text);

/// The number at the beginning of `text`, read up to the first character that cannot continue it;
/// blanks are skipped. 0 when there is none, so also for a text that begins with a currency sign.
double leadingNumber(const QString &text);

/// `text` as a 16-bit number. @throws NumberError "Overflow" outside -32768 to 32767, "Type
/// mismatch" for no number.
qint16 toInteger(const QString &text);

/// `text` as a 32-bit number, likewise.
qint32 toLong(const QString &text);
