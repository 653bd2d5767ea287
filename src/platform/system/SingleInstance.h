#pragma once

#include <QLockFile>

/// Holds the place of the one running copy in a user's session, for the life of the object.
class SingleInstance
{
public:
    /// `name` tells programs apart.
    explicit SingleInstance(const QString &name);
    /// False when another copy has it. A copy that crashed left nothing that counts.
    bool acquired() const { return m_acquired; }

private:
    QLockFile m_lock;
    bool m_acquired;
};
