#pragma once

#include "platform/jet/Bytes.h"

#include <QFile>

#include <array>

/// The pages of a Jet file, which is opened for reading only: its head, its encryption, the rows that lie on its pages.
/// Pages are read one by one and a few of them kept. (A file mapped into memory would end the program when somebody
/// cuts it short, or when its network share goes away.) What is wrong with the file is thrown as a JetError.
class JetPages
{
public:
    explicit JetPages(const QString &file);

    enum class Version { Jet3, Jet4 };
    Version version() const { return m_version; }
    qint64 fileSize() const { return m_fileSize; }
    int pageSize() const { return m_version == Version::Jet3 ? 2048 : 4096; }
    quint32 pageCount() const { return quint32(m_fileSize / pageSize()); }
    /// Code page of the texts of a Jet 3 file.
    quint16 codePage() const;
    /// The database password, as its bytes stand in the file; it is empty where there is none. It encrypts nothing.
    QByteArray password() const;

    QByteArray page(quint32 number);

    enum PageType : quint8 { DataPage = 1, DefinitionPage = 2, UsageMapPage = 5 };
    /// The same, but it must be a page of that type.
    QByteArray page(quint32 number, PageType type);
    /// A page of rows, which must belong to `owner`.
    QByteArray dataPage(quint32 number, quint32 owner);

    /// A row, with the page that it lies on.
    struct Row {
        QByteArray page;
        Bytes bytes;
        bool isElsewhere; ///< the bytes are a pointer to where the row lies
    };
    int rowCount(const QByteArray &dataPage) const;
    /// Whether a row is deleted, or has moved here from elsewhere: whoever walks the page passes it by.
    bool isGone(const QByteArray &dataPage, int number) const { return slot(dataPage, number) & 0x8000; }
    Row row(const QByteArray &dataPage, int number) const;

    /// Where a row lies, as 32 bits say it.
    struct Pointer {
        explicit Pointer(quint32 bits) : row(bits & 0xff), page(bits >> 8) { }
        int row;
        quint32 page;
    };

private:
    QByteArray readPage(quint32 number);
    Bytes head() const { return QByteArrayView(m_head); }
    quint16 slot(const QByteArray &dataPage, int number) const;
    int rowCountAt() const { return m_version == Version::Jet3 ? 8 : 12; }

    QFile m_file;
    qint64 m_fileSize = 0;
    Version m_version = Version::Jet3;
    QByteArray m_head;
    quint32 m_key = 0; ///< of the pages' encryption; 0 for none

    struct Kept {
        quint32 number = 0; ///< 0, the head, is never kept here
        QByteArray page;
    };
    std::array<Kept, 64> m_kept;
};
