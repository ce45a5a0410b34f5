#include "drive/Script.h"

#include <QStringList>

namespace hv::drive {

bool Word::Is(const char* kw) const {
    return !quoted && !contains && text.compare(QLatin1String(kw), Qt::CaseInsensitive) == 0;
}

namespace {

bool Hex_Value(QChar c, int& v) {
    const char16_t u = c.unicode();
    if (u >= '0' && u <= '9')
        v = u - '0';
    else if (u >= 'a' && u <= 'f')
        v = u - 'a' + 10;
    else if (u >= 'A' && u <= 'F')
        v = u - 'A' + 10;
    else
        return false;
    return true;
}

void Append(Word& w, QChar c) {
    w.text += c;
    w.bytes += QString(c).toUtf8();
}

void Append_Byte(Word& w, int b) {
    w.text += QChar(b);
    w.bytes += char(b);
}

// Reads a quoted word starting at the opening quote; `i` is left behind the closing quote.
bool Read_Quoted(const QString& line, qsizetype& i, Word& w, QString& reason) {
    ++i; // the opening quote
    while (i < line.size()) {
        const QChar c = line[i];
        if (c == u'"') {
            ++i;
            if (i < line.size() && !line[i].isSpace()) {
                reason = QStringLiteral("a quoted word must be followed by a blank");
                return false;
            }
            return true;
        }
        if (c != u'\\') {
            // Surrogate pairs travel together so that the byte form stays valid UTF-8.
            if (c.isHighSurrogate() && i + 1 < line.size()) {
                const QString pair = line.mid(i, 2);
                w.text += pair;
                w.bytes += pair.toUtf8();
                i += 2;
                continue;
            }
            Append(w, c);
            ++i;
            continue;
        }
        if (i + 1 >= line.size()) {
            reason = QStringLiteral("a backslash at the end of the line");
            return false;
        }
        const QChar e = line[i + 1];
        i += 2;
        switch (e.unicode()) {
        case '"':
            Append(w, u'"');
            break;
        case '\\':
            Append(w, u'\\');
            break;
        case 'n':
            Append(w, u'\n');
            break;
        case 'r':
            Append(w, u'\r');
            break;
        case 't':
            Append(w, u'\t');
            break;
        case '0':
            Append_Byte(w, 0);
            break;
        case 'x': {
            int hi = 0;
            int lo = 0;
            if (i + 1 >= line.size() || !Hex_Value(line[i], hi) || !Hex_Value(line[i + 1], lo)) {
                reason = QStringLiteral("\\x must be followed by two hexadecimal digits");
                return false;
            }
            Append_Byte(w, hi * 16 + lo);
            i += 2;
            break;
        }
        default:
            // Not an escape: the backslash stands for itself, as in a registry path written with single
            // backslashes ("SOFTWARE\Microsoft"). The character after it is read again as an ordinary one.
            Append(w, u'\\');
            i -= 1;
            break;
        }
    }
    reason = QStringLiteral("a quoted word is not closed");
    return false;
}

} // namespace

bool Split_Line(const QString& line, std::vector<Word>& words, QString& reason) {
    words.clear();
    qsizetype i = 0;
    while (i < line.size()) {
        if (line[i].isSpace()) {
            ++i;
            continue;
        }
        Word w;
        if (line[i] == u'"' || (line[i] == u'~' && i + 1 < line.size() && line[i + 1] == u'"')) {
            if (line[i] == u'~') {
                w.contains = true;
                ++i;
            }
            w.quoted = true;
            if (!Read_Quoted(line, i, w, reason))
                return false;
        } else {
            while (i < line.size() && !line[i].isSpace()) {
                if (line[i] == u'"') {
                    reason = QStringLiteral("a quote inside a word: write the whole word in quotes");
                    return false;
                }
                Append(w, line[i]);
                ++i;
            }
        }
        words.push_back(std::move(w));
    }
    return true;
}

bool Parse_Script(const QByteArray& content, std::vector<Command>& commands, ParseError& error) {
    commands.clear();
    QString text = QString::fromUtf8(content);
    if (text.startsWith(QChar(0xFEFF)))
        text.remove(0, 1); // an editor's byte order mark is not part of the first command
    const QStringList lines = text.split(u'\n');
    for (qsizetype n = 0; n < lines.size(); ++n) {
        QString line = lines[n];
        if (line.endsWith(u'\r'))
            line.chop(1);
        const QString trimmed = line.trimmed();
        if (trimmed.isEmpty() || trimmed.startsWith(u'#'))
            continue;
        Command c;
        c.line = int(n) + 1;
        c.source = trimmed;
        QString reason;
        if (!Split_Line(line, c.words, reason)) {
            error = ParseError{c.line, reason};
            return false;
        }
        commands.push_back(std::move(c));
    }
    return true;
}

} // namespace hv::drive
