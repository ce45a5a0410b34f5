#pragma once
// A scenario file as words: one command a line, words separated by blanks, quoted words with escapes.
#include <QByteArray>
#include <QString>
#include <vector>

namespace hv::drive {

struct Word {
    QString text;     // \xHH stands for the character of that code
    QByteArray bytes; // the same word as bytes: \xHH is that byte, other characters in UTF-8
    bool quoted = false;
    bool contains = false; // written ~"TEXT"

    // A keyword: an unquoted word equal to `kw` without regard to case.
    bool Is(const char* kw) const;
};

struct Command {
    int line = 0;
    QString source; // the line as written, for the transcript
    std::vector<Word> words;
};

struct ParseError {
    int line = 0;
    QString reason;
};

// Splits one line into words; false with a reason when the line cannot be read.
bool Split_Line(const QString& line, std::vector<Word>& words, QString& reason);

// Reads a whole file. Comment lines (first non-blank character '#') and blank lines are left out.
bool Parse_Script(const QByteArray& content, std::vector<Command>& commands, ParseError& error);

} // namespace hv::drive
