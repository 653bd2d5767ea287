#pragma once

#include <QFile>
#include <QTest>

/// What a file holds; nothing where there is none.
inline QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// A template that prints `text` for each record of `data`, in one column; `bands` go between.
inline QByteArray simpleTemplate(const QByteArray &data, const QByteArray &text, const QByteArray &bands = {})
{
    return "<report version=\"1\"><data>" + data
        + "</data><columns><column name=\"a\" width=\"1\" wrap=\"yes\"/></columns>" + bands
        + "<detail><line><cell in=\"a\">" + text + "</cell></line></detail></report>";
}

inline void writeFile(const QString &path, const QByteArray &content)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(content), content.size());
}
