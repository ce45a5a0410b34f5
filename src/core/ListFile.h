#pragma once
// The list text file that the rule list pages export and import.
//
// Export writes one item a line, each line ended by CR LF, no quotes and no header.
// Import reads comma-and-line fields rather than lines: a field ends at a comma or at a line end, blanks
// (the space character only) ahead of a field are skipped, and a field that opens with a double quote
// runs to the closing quote with its commas kept. An empty line is an empty field; the last line needs no
// line end.
//
// Files are UTF-8 on this platform. Older consoles wrote their lists in the Windows-1252 code page, and
// lists are often pasted together from several sources, so each line is read as UTF-8 when it is valid
// UTF-8 and as Windows-1252 otherwise. A file that begins with a UTF-16 byte order mark is UTF-16 as a
// whole. Only the file's first bytes can be a byte order mark: U+FEFF anywhere else is text.
//
// Files are read as a stream, a window of the file at a time, so a list larger than memory is read like
// any other: a field keeps at most kKeep characters and the rest of it is only looked at.
#include <QByteArray>
#include <QFile>
#include <QString>
#include <QStringConverter>
#include <QStringList>

class QIODevice;

namespace hv {

// The Windows-1252 reading of bytes (the five unassigned codes map to the C1 controls, as Windows does).
QString Decode_Windows_1252(const char* bytes, qsizetype size);

// True when the bytes are well-formed UTF-8 (no overlong forms, no surrogates, nothing above U+10FFFF).
// Fed piece by piece, so a line longer than any buffer can be judged.
class Utf8Check final {
public:
    void Feed(const char* bytes, qsizetype size);
    bool Valid() const { return !m_bad && m_need == 0; }

private:
    int m_need = 0;
    char32_t m_code = 0;
    char32_t m_least = 0;
    bool m_bad = false;
};

// One field as read from a file.
struct ListField {
    static constexpr qsizetype kKeep = 65536;

    // The field from its first character that is not a blank, at most kKeep characters (a surrogate pair
    // is kept whole or not at all).
    QString text;
    // Blanks inside a quoted field ahead of the text. A field without quotes has its blanks skipped.
    qsizetype leadingBlanks = 0;
    // Characters other than blanks followed beyond the text: the field was longer than kept.
    bool more = false;
    // The field holds a NUL character somewhere, kept or not.
    bool nul = false;

    // The field as the file holds it, within the kept characters.
    QString Whole() const;
};

// Reads fields one after another from a device, from its current position; the device stays the
// caller's and must be able to seek when a line is longer than the reader's window.
class ListFieldReader final {
public:
    explicit ListFieldReader(QIODevice& device);
    // True when no field is left.
    bool Eof();
    // The next field. Reading past the end raises "Input past end of file" (62).
    ListField Next_Field();
    // How far into the file the reader has come, in the file's bytes: a measure of progress.
    qint64 Bytes_Read() const;
    // The line, counted from 1, on which the field last read began (a report can point at it).
    qint64 Field_Line() const { return m_fieldLine; }

private:
    void Start();
    // Drops the window's bytes before keepFrom (which becomes 0) and reads more; false at the end.
    bool More(qsizetype& keepFrom);
    int Peek(); // the byte at the position, -1 at the end
    void Decide_Line();
    void Add_Bytes(ListField& field, const char* bytes, qsizetype size) const;
    qsizetype Char_Boundary(qsizetype pos) const;
    // Adds the rest of the window to a field that goes on past it and reads more; false at the file's end.
    bool Carry_On(ListField& field);
    void Read_Quoted(ListField& field);
    void Read_Plain(ListField& field);

    QIODevice* m_device;
    QByteArray m_buf;
    qsizetype m_pos = 0;
    qint64 m_bufAt = 0; // the device position of the window's first byte (UTF-8 bytes for a UTF-16 file)
    qint64 m_rawRead = 0;
    bool m_started = false;
    bool m_deviceEnd = false;
    bool m_utf16 = false;
    bool m_lineStart = true;
    qint64 m_line = 0;
    qint64 m_fieldLine = 0;
    bool m_lineUtf8 = true;
    QStringDecoder m_fromUtf16;
    mutable QStringDecoder m_fromUtf8{QStringConverter::Utf8, QStringConverter::Flag::Stateless |
                                                                  QStringConverter::Flag::ConvertInitialBom};
};

// A list file opened for input. A missing file raises "File not found" (53), a folder, a device, a pipe or
// an unreadable file "Path/File access error" (75), an empty name "Bad file name or number" (52).
class ListFileInput final {
public:
    explicit ListFileInput(const QString& path);
    ListFieldReader& Reader() { return m_reader; }
    qint64 Size() const { return m_size; }

private:
    QFile m_file;
    qint64 m_size = 0;
    ListFieldReader m_reader;
};

// All fields of a file's bytes, in file order, as the file holds them.
QStringList Read_List_Fields(const QByteArray& bytes);

// The bytes Export writes for these items. When the first item itself begins with U+FEFF, a byte order
// mark goes ahead of it, so that the reader, which drops the file's mark, keeps the item's character.
QByteArray Export_Bytes(const QStringList& items);

// Opens a file for output, replacing any file of that name, and writes the items. An empty or unusable
// name raises "Bad file name or number" (52), a file that cannot be created "Path/File access error" (75).
void Write_List_File(const QString& path, const QStringList& items);

} // namespace hv
