#include "platform/engine/StatementCache.h"

namespace {

// All windows together use a few hundred.
constexpr size_t maximumEntries = 512;

}

std::shared_ptr<const PreparedStatement> StatementCache::find(const QString &shape)
{
    const auto found = m_byShape.find(shape);
    if (found == m_byShape.end())
        return nullptr;
    m_entries.splice(m_entries.begin(), m_entries, found->second);
    return m_entries.front().statement;
}

void StatementCache::insert(const QString &shape, std::shared_ptr<const PreparedStatement> statement)
{
    if (const auto former = m_byShape.find(shape); former != m_byShape.end()) {
        m_entries.erase(former->second);
        m_byShape.erase(former);
    } else if (m_entries.size() == maximumEntries) {
        m_byShape.erase(m_entries.back().shape);
        m_entries.pop_back();
    }
    m_entries.push_front({shape, std::move(statement)});
    m_byShape.emplace(shape, m_entries.begin());
}

void StatementCache::clear()
{
    m_byShape.clear();
    m_entries.clear();
}
