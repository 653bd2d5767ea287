#include "platform/jet/JetPages.h"

#include <QFileInfo>

#include <algorithm>
#include <cmath>
#include <numeric>

namespace {

constexpr QByteArrayView family("\0\1\0\0Standard ", 13);
constexpr QByteArrayView signature("\0\1\0\0Standard Jet DB\0", 20);
constexpr QByteArrayView headKey("\xc7\xda\x39\x6b", 4);

// Where things stand in the head.
constexpr int versionAt = 0x14;
constexpr int encryptedFrom = 0x18;
constexpr int encryptedSizeJet3 = 126;
constexpr int encryptedSizeJet4 = 128;
constexpr int codePageAt = 0x3c;
constexpr int keyAt = 0x3e;
constexpr int passwordAt = 0x42;
constexpr int creationDateAt = 0x72;

constexpr int leastPages = 3; // the head, the map of free pages, the catalogue

/// The RC4 cipher, whose encryption is also its decryption.
void applyRc4(QByteArrayView key, char *bytes, qsizetype size)
{
    std::array<quint8, 256> state;
    std::iota(state.begin(), state.end(), quint8(0));
    for (int i = 0, j = 0; i < 256; ++i) {
        j = (j + state[i] + quint8(key[i % key.size()])) & 255;
        std::swap(state[i], state[j]);
    }
    quint8 i = 0, j = 0;
    for (qsizetype k = 0; k < size; ++k) {
        j = quint8(j + state[++i]);
        std::swap(state[i], state[j]);
        bytes[k] ^= char(state[quint8(state[i] + state[j])]);
    }
}

}

JetPages::JetPages(const QString &file) : m_file(file)
{
    // Opening a pipe would wait for its other end.
    if (!QFileInfo::exists(file))
        throw JetError(JetError::CannotRead, "is not there");
    if (!QFileInfo(file).isFile() || !m_file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        throw JetError(JetError::CannotRead, "is not a file that can be read");
    m_fileSize = m_file.size();

    const QByteArray beginning = m_file.read(signature.size() + 1);
    if (!beginning.startsWith(family) || beginning.size() <= versionAt)
        throw JetError(JetError::NotADatabase, "is no Jet database");
    const quint8 version = quint8(beginning[versionAt]);
    if (!beginning.startsWith(signature) || version > 1)
        throw JetError(JetError::NewerFormat, "has a newer format than Jet 3 and Jet 4, which this program reads");
    m_version = version == 0 ? Version::Jet3 : Version::Jet4;
    if (m_fileSize % pageSize() != 0 || pageCount() < leastPages)
        throw JetError::damaged("it ends in the middle");

    m_head = readPage(0);
    applyRc4(headKey, m_head.data() + encryptedFrom,
             m_version == Version::Jet3 ? encryptedSizeJet3 : encryptedSizeJet4);
    m_key = head().number32(keyAt);
}

quint16 JetPages::codePage() const { return head().word(codePageAt); }

QByteArray JetPages::password() const
{
    if (m_version == Version::Jet3)
        return head().part(passwordAt, 20).view().toByteArray();
    // The day on which the file was made is laid over it.
    const double day = std::trunc(head().number<double>(creationDateAt));
    const quint32 mask = std::fabs(day) < 1e9 ? quint32(qint32(day)) : 0;
    QByteArray password = head().part(passwordAt, 40).view().toByteArray();
    for (int i = 0; i < password.size(); ++i)
        password[i] ^= char(mask >> 8 * (i % 4));
    return password;
}

QByteArray JetPages::readPage(quint32 number)
{
    if (number >= pageCount())
        throw JetError::damaged(QString("it names page %1 and has %2").arg(number).arg(pageCount()));
    QByteArray page(pageSize(), Qt::Uninitialized);
    if (!m_file.seek(qint64(number) * pageSize()) || m_file.read(page.data(), page.size()) != page.size())
        throw JetError(JetError::CannotRead, QString("cannot be read at page %1").arg(number));
    return page;
}

QByteArray JetPages::page(quint32 number)
{
    Kept &kept = m_kept[number % m_kept.size()];
    if (kept.number != number || kept.page.isEmpty()) {
        QByteArray page = readPage(number);
        if (m_key != 0 && number != 0) {
            const quint32 key = qToLittleEndian(m_key ^ number);
            applyRc4({reinterpret_cast<const char *>(&key), sizeof key}, page.data(), page.size());
        }
        kept = {number, page};
    }
    return kept.page;
}

QByteArray JetPages::page(quint32 number, PageType type)
{
    const QByteArray found = page(number);
    if (quint8(found.front()) != type)
        throw JetError::damaged(QString("page %1 is not of the kind that it should be").arg(number));
    return found;
}

QByteArray JetPages::dataPage(quint32 number, quint32 owner)
{
    const QByteArray found = page(number, DataPage);
    if (Bytes(found).number32(4) != owner)
        throw JetError::damaged(QString("page %1 belongs to another table than it should").arg(number));
    return found;
}

int JetPages::rowCount(const QByteArray &dataPage) const { return Bytes(dataPage).word(rowCountAt()); }

quint16 JetPages::slot(const QByteArray &dataPage, int number) const
{
    return Bytes(dataPage).word(rowCountAt() + 2 + 2 * number);
}

JetPages::Row JetPages::row(const QByteArray &dataPage, int number) const
{
    constexpr quint16 offset = 0x1fff, elsewhere = 0x4000;
    if (number >= rowCount(dataPage))
        throw JetError::damaged("it names a row that is not there");
    // The slots stand at the page's beginning; the rows fill it from its end.
    const int begin = slot(dataPage, number) & offset;
    const int end = number == 0 ? int(dataPage.size()) : slot(dataPage, number - 1) & offset;
    if (begin < rowCountAt() + 2 + 2 * rowCount(dataPage))
        throw JetError::damaged("a row lies where other things of its page are");
    return {dataPage, Bytes(dataPage).part(begin, end - begin), bool(slot(dataPage, number) & elsewhere)};
}
