#pragma once

#include "platform/reportengine/Template.h"

#include <QXmlStreamReader>

#include <functional>

/// Reads a template's file strictly: an element, attribute or word that it does not know is an error with its line.
class TemplateReader
{
public:
    static constexpr int maxBytes = 1024 * 1024;
    static constexpr int maxTables = 16;
    static constexpr int maxColumns = 64;
    static constexpr int maxGroups = 8;
    static constexpr int maxLines = 200; ///< of a band
    static constexpr int maxCells = 64; ///< of a line
    static constexpr int maxCellText = 4000; ///< characters

    /// @throws ReportError 20504 for no such file, 20530 for one that cannot be read, 20525 for one that is no template
    /// of ours, 20511 for an unknown sort order.
    static Template readFile(const QString &path);
    /// The same for a file's content; `fileName` stands in messages.
    static Template read(const QByteArray &content, const QString &fileName);

private:
    /// An element that may stand at a place: the attributes it may have and what reads it up to its end.
    struct Element {
        const char *name;
        const char *attributes;
        std::function<void()> read;
        bool mayRepeat = false;
    };
    struct Word {
        const char *word;
        int meaning;
    };

    TemplateReader(const QString &content, const QString &fileName);
    void readReport();
    void readData();
    void readJoin();
    void readSort();
    void readColumns();
    void readGroup();
    void readDetail();
    /// Of the group `level`, or of the report.
    void readBand(Band &band, int level, bool mayHaveCharts = false);
    void requireRoom(const Band &band) const;
    void readLine(Band &band, int level);
    void readRule(Band &band);
    void readChart(Band &band, int level);
    void readCell(Cell &cell, int level);
    void readCellText(Cell &cell, int level);

    void readChildren(const QList<Element> &elements);
    void readEmpty() { readChildren({}); }
    QString readText();

    bool has(const char *attribute) const;
    QString text(const char *attribute) const;
    QString requiredText(const char *attribute) const;
    bool yesNo(const char *attribute) const;
    /// In points, which a text may give in "mm" or "in" as well.
    double length(const char *attribute, double lowest, double highest, double otherwise) const;
    double number(const char *attribute, double lowest, double highest, double otherwise) const;
    int choice(const char *attribute, std::initializer_list<Word> words, int otherwise) const;
    void readPage();
    QPageSize ownPaper() const;
    int linesOfText() const;
    Qt::Alignment alignment(Qt::Alignment otherwise) const;
    int fieldReference(const char *attribute);
    Formula formula(const QString &text);
    int gridColumn(const QString &name) const;
    void checkComplete() const;
    void checkCharts() const;
    [[noreturn]] void fail(const QString &what) const;
    [[noreturn]] void fail(int code, const QString &what) const;

    QXmlStreamReader m_xml;
    /// Of the element being read; m_xml forgets them at the next token.
    QXmlStreamAttributes m_attributes;
    int m_line = 0;
    Template m_template;
};
