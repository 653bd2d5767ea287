#pragma once

#include <QDateTime>
#include <QList>
#include <QString>

/// `text` as a statement of the query dialect holds it: between apostrophes, those inside doubled. The language below
/// it has its own, dialect::quotedText().
QString quoted(const QString &text);

/// The numbers as a statement's IN holds them: "1,2,3".
QString joined(const QList<qint32> &numbers);

/// `when` as a statement holds it: between number signs, in the default text form of a date and time.
QString dateLiteral(const QDateTime &when);
