#pragma once

#include "platform/engine/Recordset.h"
#include "transactions/AtomicChange.h"

#include <QStringList>

/// The record that an editor shows. Somebody at another place may change it while the editor is open; what he wrote is
/// not overwritten unseen.
class EditedRecord
{
public:
    /// `statement` selects the record, up to its number that follows; `fields` are those that the editor shows.
    EditedRecord(const QString &statement, const QStringList &fields) : m_statement(statement), m_fields(fields) { }

    /// Reads the record, and keeps in mind how it was.
    Recordset load(qint64 id);
    /// Runs `steps`, which change the record, as one change. Inside it and before them the record is read again: where
    /// it is gone the change is refused in the words `gone`, where it is not as it was the user is asked whether to
    /// overwrite it. @returns Refused without words where he does not wish to.
    AtomicChange save(const QString &gone, const std::function<void()> &steps);

private:
    QString contents(const Recordset &record) const;

    QString m_statement;
    QStringList m_fields;
    qint64 m_id = 0;
    QString m_contents;
};
