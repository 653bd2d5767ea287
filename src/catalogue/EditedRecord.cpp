#include "catalogue/EditedRecord.h"

#include "db/Session.h"
#include "platform/gui/MsgBox.h"

namespace {

/// Ends a change of a record that has other contents now.
struct ChangedElsewhere {
    QString contents;
};

}

QString EditedRecord::contents(const Recordset &record) const
{
    QStringList texts;
    for (const QString &field : m_fields)
        texts.append(record.text(field));
    return texts.join('\n');
}

Recordset EditedRecord::load(qint64 id)
{
    m_id = id;
    Recordset record = openRecordset(m_statement + QString::number(id));
    m_contents = record.isEmpty() ? QString() : contents(record);
    return record;
}

AtomicChange EditedRecord::save(const QString &gone, const std::function<void()> &steps)
{
    for (;;) {
        try {
            return AtomicChange::attempt([&] {
                const Recordset present = openRecordset(m_statement + QString::number(m_id));
                refuseUnless(!present.isEmpty(), gone);
                if (contents(present) != m_contents)
                    throw ChangedElsewhere{contents(present)};
                steps();
            });
        } catch (const ChangedElsewhere &changed) {
            if (!confirmed("This record was changed at another place since. Overwrite it?"))
                return {AtomicChange::Refused};
            // The answer is about what stands there now; another change is asked about again.
            m_contents = changed.contents;
        }
    }
}
