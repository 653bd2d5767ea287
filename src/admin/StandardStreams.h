#pragma once

/// While it lives standard output and standard error carry the same bytes on every system: UTF-8, and lines that end
/// with a line feed alone. A console shows them as that.
class StandardStreams
{
public:
    StandardStreams();
    ~StandardStreams();
    StandardStreams(const StandardStreams &) = delete;
    StandardStreams &operator=(const StandardStreams &) = delete;

private:
    [[maybe_unused]] unsigned m_codePage = 0; ///< the console's own
};
