#pragma once

#include "platform/jet/JetPages.h"

#include <QStringDecoder>

/// Turns the texts of a Jet file into ours: in Jet 3 they are in the code page of the file, in Jet 4 in UTF-16,
/// compressed or not.
class JetText
{
public:
    /// @throws JetError for a code page that this computer does not know.
    explicit JetText(const JetPages &pages);

    QString decoded(const Bytes &bytes);
    /// How many U+FFFD have come up in place of what cannot be mapped.
    qint64 unknownCharacters() const { return m_unknown; }

private:
    QString unicode(const Bytes &bytes);

    bool m_isUnicode;
    bool m_isWestern = false; ///< in code page 1252, by far the commonest
    QStringDecoder m_codePage;
    qint64 m_unknown = 0;
};
