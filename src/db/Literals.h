#pragma once

#include <QDateTime>
#include <QString>

/// `text` as a statement holds it: between apostrophes, those inside doubled.
QString quoted(const QString &text);

/// `when` as a statement holds it: between number signs, in the default text form of a date and time.
QString dateLiteral(const QDateTime &when);
