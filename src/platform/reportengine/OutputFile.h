#pragma once

#include <QSaveFile>

/// A file that a report is written to. It stands under its name only when it is whole: a run that fails or is cancelled
/// leaves what was there before.
class OutputFile
{
public:
    /// @throws ReportError 20514 when the file exists and may not be replaced, 20530 when it cannot be written.
    OutputFile(const QString &path, bool mayReplace);

    QSaveFile &file() { return m_file; }
    /// @throws ReportError 20529 for a full disk, 20530 for any other failure.
    void commit();

    /// Throws the error that `file` has met, if any, likewise.
    static void check(QFileDevice &file);

private:
    QSaveFile m_file;
};
