#include "admin/StandardStreams.h"

#include <QtGlobal>

#ifdef Q_OS_WIN
#include <cstdio>
#include <fcntl.h>
#include <io.h>
#include <windows.h>

StandardStreams::StandardStreams() : m_codePage(GetConsoleOutputCP())
{
    SetConsoleOutputCP(CP_UTF8);
    for (FILE *stream : {stdout, stderr})
        _setmode(_fileno(stream), _O_BINARY);
}

// The console outlives the program.
StandardStreams::~StandardStreams() { SetConsoleOutputCP(m_codePage); }

#else

StandardStreams::StandardStreams() = default;
StandardStreams::~StandardStreams() = default;

#endif
