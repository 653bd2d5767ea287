#pragma once

#include "platform/jet/JetError.h"

#include <QByteArrayView>
#include <QtEndian>

/// A stretch of a file, little-endian, in which nothing is read past the end. Asking for more than there is throws
/// JetError::Damaged. The bytes belong to somebody else.
class Bytes
{
public:
    Bytes() = default;
    Bytes(QByteArrayView bytes) : m_bytes(bytes) { }
    Bytes(const QByteArray &bytes) : m_bytes(bytes) { }

    qsizetype size() const { return m_bytes.size(); }
    QByteArrayView view() const { return m_bytes; }

    Bytes part(qint64 at, qint64 size) const
    {
        if (at < 0 || size < 0 || at > m_bytes.size() || size > m_bytes.size() - at)
            throw JetError::damaged("something in it leads outside of where it should lie");
        return m_bytes.sliced(at, size);
    }
    Bytes from(qint64 at) const { return part(at, m_bytes.size() - at); }

    template<typename Number>
    Number number(qint64 at) const
    {
        return qFromLittleEndian<Number>(part(at, sizeof(Number)).m_bytes.data());
    }
    quint8 byte(qint64 at) const { return number<quint8>(at); }
    quint16 word(qint64 at) const { return number<quint16>(at); }
    quint32 number32(qint64 at) const { return number<quint32>(at); }

    bool bit(qint64 number) const { return byte(number / 8) >> (number % 8) & 1; }

private:
    QByteArrayView m_bytes;
};
