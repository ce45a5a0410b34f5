#pragma once
// The list text file that the rule list pages export and import.
//
// Export writes one item a line, each line ended by CR LF, no quotes, no header and no byte order mark.
// Import reads comma-and-line fields rather than lines: a field ends at a comma or at a line end, blanks
// ahead of a field are skipped, and a field that opens with a double quote runs to the closing quote with
// its commas kept. An empty line is an empty field; the last line needs no line end.
//
// Files are UTF-8 on this platform. Older consoles wrote their lists in the Windows-1252 code page, so a
// file that is not valid UTF-8 is read as Windows-1252.
#include <QByteArray>
#include <QString>
#include <QStringList>

namespace hv {

// Text of a file's bytes: UTF-8 when the bytes are valid UTF-8 (a leading byte order mark is dropped),
// Windows-1252 otherwise.
QString Decode_List_Text(const QByteArray& bytes);

// The Windows-1252 reading of bytes (the five unassigned codes map to the C1 controls, as Windows does).
QString Decode_Windows_1252(const char* bytes, qsizetype size);

// Reads fields one after another from a file's bytes. The delimiters are single bytes in both encodings,
// so the bytes are cut first and each field alone becomes text: a block list of megabytes is never held
// as text in full.
class ListFieldReader final {
public:
    explicit ListFieldReader(QByteArray bytes);
    // True when no field is left.
    bool Eof() const { return m_pos >= m_bytes.size(); }
    // The next field, raw: the caller trims and cuts it. Reading past the end raises "Input past end of
    // file" (62).
    QString Next_Field();
    bool Is_Utf8() const { return m_utf8; }
    // About how many fields the file holds (one a line end or comma, and the last line): enough to make
    // room for the rows an import adds, never a promise.
    qsizetype Field_Estimate() const;

private:
    QString Text(qsizetype start, qsizetype end) const;
    void Skip_Line_End();
    QByteArray m_bytes;
    qsizetype m_pos = 0;
    bool m_utf8 = true;
};

// All fields of a file's bytes, in file order.
QStringList Read_List_Fields(const QByteArray& bytes);

// The bytes Export writes for these items.
QByteArray Export_Bytes(const QStringList& items);

// Opens a file for input and returns its bytes. A missing file raises "File not found" (53), an unreadable
// one "Path/File access error" (75).
QByteArray Read_List_File(const QString& path);
// Opens a file for output, replacing any file of that name, and writes the items. An empty or unusable
// name raises "Bad file name or number" (52), a file that cannot be created "Path/File access error" (75).
void Write_List_File(const QString& path, const QStringList& items);

} // namespace hv
