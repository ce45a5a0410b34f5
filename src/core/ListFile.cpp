#include "core/ListFile.h"

#include "platform/Err.h"

#include <QBuffer>
#include <QFileInfo>
#include <cstring>

namespace hv {

namespace {

// Windows-1252 from 0x80 to 0x9F; the rest of the code page is Latin-1.
constexpr char16_t kCp1252High[32] = {0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                      0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                      0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                      0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

constexpr char kBom[] = "\xEF\xBB\xBF";

// What one read takes from the file, and how far the window may grow to hold a whole line; a longer line
// is judged as it streams by and then read again from its start.
constexpr qint64 kChunk = 1 << 16;
constexpr qsizetype kWindow = 1 << 20;

bool Is_Line_End(char c) {
    return c == '\r' || c == '\n';
}

// The first position from `from` whose byte is one of the stops, or `end`.
template <typename Stop> qsizetype Find(const char* d, qsizetype from, qsizetype end, Stop stop) {
    while (from < end && !stop(d[from]))
        ++from;
    return from;
}

// Cuts a text to at most `keep` UTF-16 units without leaving half a surrogate pair.
void Cut_Whole(QString& text, qsizetype keep) {
    if (text.size() <= keep)
        return;
    if (keep > 0 && text.at(keep - 1).isHighSurrogate())
        --keep;
    text.truncate(keep);
}

bool Has_Non_Blank(QStringView text) {
    for (QChar c : text)
        if (c != u' ')
            return true;
    return false;
}

} // namespace

QString Decode_Windows_1252(const char* bytes, qsizetype size) {
    QString out(size, Qt::Uninitialized);
    QChar* d = out.data();
    for (qsizetype i = 0; i < size; ++i) {
        const auto b = static_cast<unsigned char>(bytes[i]);
        d[i] = (b >= 0x80 && b < 0xA0) ? QChar(kCp1252High[b - 0x80]) : QChar(b);
    }
    return out;
}

void Utf8Check::Feed(const char* bytes, qsizetype size) {
    for (qsizetype i = 0; i < size && !m_bad; ++i) {
        const auto b = static_cast<unsigned char>(bytes[i]);
        if (m_need == 0) {
            if (b < 0x80)
                continue;
            if (b >= 0xC2 && b <= 0xDF) {
                m_need = 1, m_code = b & 0x1F, m_least = 0x80;
            } else if (b >= 0xE0 && b <= 0xEF) {
                m_need = 2, m_code = b & 0x0F, m_least = 0x800;
            } else if (b >= 0xF0 && b <= 0xF4) {
                m_need = 3, m_code = b & 0x07, m_least = 0x10000;
            } else {
                m_bad = true;
            }
            continue;
        }
        if ((b & 0xC0) != 0x80) {
            m_bad = true;
            break;
        }
        m_code = (m_code << 6) | (b & 0x3F);
        if (--m_need == 0 &&
            (m_code < m_least || m_code > 0x10FFFF || (m_code >= 0xD800 && m_code <= 0xDFFF)))
            m_bad = true;
    }
}

QString ListField::Whole() const {
    if (leadingBlanks == 0)
        return text;
    QString whole(std::min(leadingBlanks, kKeep - text.size()), u' ');
    return whole + text;
}

// ---- the reader --------------------------------------------------------------------------------------

ListFieldReader::ListFieldReader(QIODevice& device) : m_device(&device) {}

void ListFieldReader::Start() {
    m_started = true;
    m_bufAt = m_device->pos();
    qsizetype keep = 0;
    while (m_buf.size() < 3 && More(keep)) {
    }
    if (m_buf.startsWith(kBom)) {
        m_pos = 3;
        return;
    }
    const bool little = m_buf.startsWith("\xFF\xFE");
    if (!little && !m_buf.startsWith("\xFE\xFF"))
        return;
    // A UTF-16 file is turned into UTF-8 as it streams in; its lines need no judging then. A U+FEFF after
    // the file's own mark is text.
    m_utf16 = true;
    m_fromUtf16 = QStringDecoder(little ? QStringConverter::Utf16LE : QStringConverter::Utf16BE,
                                 QStringConverter::Flag::ConvertInitialBom);
    const QByteArray raw = m_buf.mid(2);
    m_buf = QString(m_fromUtf16.decode(raw)).toUtf8();
    m_pos = 0;
    m_bufAt = 0;
}

bool ListFieldReader::More(qsizetype& keepFrom) {
    if (keepFrom > 0) {
        m_buf.remove(0, keepFrom);
        m_pos -= keepFrom;
        m_bufAt += keepFrom;
        keepFrom = 0;
    }
    while (!m_deviceEnd) {
        const QByteArray raw = m_device->read(kChunk);
        if (raw.isEmpty()) {
            m_deviceEnd = true;
            // A lone byte at the end of a UTF-16 file is a broken character, shown as such.
            if (m_utf16 && (m_rawRead - 2) % 2 != 0) {
                m_buf += QStringLiteral(u"\uFFFD").toUtf8();
                return true;
            }
            return false;
        }
        m_rawRead += raw.size();
        if (!m_utf16) {
            m_buf += raw;
            return true;
        }
        const QString text = m_fromUtf16.decode(raw);
        if (!text.isEmpty()) {
            m_buf += text.toUtf8();
            return true;
        }
    }
    return false;
}

int ListFieldReader::Peek() {
    if (m_pos >= m_buf.size()) {
        qsizetype keep = m_pos;
        if (!More(keep))
            return -1;
    }
    return static_cast<unsigned char>(m_buf.at(m_pos));
}

bool ListFieldReader::Eof() {
    if (!m_started)
        Start();
    return Peek() < 0;
}

qint64 ListFieldReader::Bytes_Read() const {
    return m_utf16 ? m_rawRead : m_bufAt + m_pos;
}

// Judges the line that starts at the position: UTF-8 when all of it is valid UTF-8.
void ListFieldReader::Decide_Line() {
    m_lineStart = false;
    ++m_line;
    if (m_utf16) {
        m_lineUtf8 = true;
        return;
    }
    Utf8Check check;
    const qint64 lineAt = m_bufAt + m_pos;
    bool streamed = false;
    qsizetype from = m_pos;
    for (;;) {
        const qsizetype end = Find(m_buf.constData(), from, m_buf.size(), Is_Line_End);
        check.Feed(m_buf.constData() + from, end - from);
        if (end < m_buf.size())
            break;
        // The line goes on past the window: keep it whole while it fits, else let it stream by and read
        // it again from its start once it is judged.
        if (streamed || m_buf.size() - m_pos > kWindow) {
            streamed = true;
            m_pos = m_buf.size();
        }
        qsizetype keep = m_pos;
        const qsizetype seen = m_buf.size() - keep;
        if (!More(keep))
            break;
        from = seen;
    }
    m_lineUtf8 = check.Valid();
    if (streamed) {
        if (!m_device->seek(lineAt))
            Err().Raise(errnum::PathFileAccessError);
        m_buf.clear();
        m_pos = 0;
        m_bufAt = lineAt;
        m_deviceEnd = false;
    }
}

// The window's last position at or before `end` where a character begins, so that the bytes ahead of it
// hold only whole characters.
qsizetype ListFieldReader::Char_Boundary(qsizetype end) const {
    if (!m_lineUtf8)
        return end;
    for (qsizetype p = end - 1; p >= std::max<qsizetype>(m_pos, end - 4); --p) {
        const auto b = static_cast<unsigned char>(m_buf.at(p));
        if ((b & 0xC0) == 0x80)
            continue;
        const qsizetype length = b < 0x80 ? 1 : b >= 0xF0 ? 4 : b >= 0xE0 ? 3 : 2;
        return p + length > end ? p : end;
    }
    return end;
}

void ListFieldReader::Add_Bytes(ListField& field, const char* bytes, qsizetype size) const {
    if (size <= 0)
        return;
    if (!field.nul && std::memchr(bytes, 0, size_t(size)))
        field.nul = true;
    const qsizetype room = ListField::kKeep - field.text.size();
    if (room <= 0 || field.more) {
        if (!field.more)
            field.more = Find(bytes, 0, size, [](char c) { return c != ' '; }) < size;
        return;
    }
    // Only as many bytes as can still be kept become text; what lies beyond is only looked at.
    qsizetype take = std::min(size, m_lineUtf8 ? room * 4 : room);
    if (m_lineUtf8)
        while (take < size && take > 0 && (static_cast<unsigned char>(bytes[take]) & 0xC0) == 0x80)
            --take;
    QString piece =
        m_lineUtf8 ? m_fromUtf8.decode(QByteArrayView(bytes, take)) : Decode_Windows_1252(bytes, take);
    if (take < size)
        field.more = Find(bytes, take, size, [](char c) { return c != ' '; }) < size;
    if (field.text.isEmpty()) {
        qsizetype blanks = 0;
        while (blanks < piece.size() && piece.at(blanks) == u' ')
            ++blanks;
        field.leadingBlanks += blanks;
        if (blanks > 0)
            piece.remove(0, blanks);
    }
    if (field.text.isEmpty())
        field.text = std::move(piece);
    else
        field.text += piece;
    if (field.text.size() > ListField::kKeep) {
        const QString cut = field.text;
        Cut_Whole(field.text, ListField::kKeep);
        if (Has_Non_Blank(QStringView(cut).mid(field.text.size())))
            field.more = true;
    }
}

bool ListFieldReader::Carry_On(ListField& field) {
    // The field goes on past the window: what is whole becomes text, the rest waits for more.
    const qsizetype whole = Char_Boundary(m_buf.size());
    Add_Bytes(field, m_buf.constData() + m_pos, whole - m_pos);
    m_pos = whole;
    qsizetype keep = m_pos;
    if (More(keep))
        return true;
    Add_Bytes(field, m_buf.constData() + m_pos, m_buf.size() - m_pos);
    m_pos = m_buf.size();
    return false;
}

void ListFieldReader::Read_Plain(ListField& field) {
    for (;;) {
        const qsizetype end =
            Find(m_buf.constData(), m_pos, m_buf.size(), [](char c) { return c == ',' || Is_Line_End(c); });
        if (end < m_buf.size()) {
            Add_Bytes(field, m_buf.constData() + m_pos, end - m_pos);
            m_pos = end;
            return;
        }
        if (!Carry_On(field))
            return;
    }
}

void ListFieldReader::Read_Quoted(ListField& field) {
    ++m_pos; // the opening quote
    for (;;) {
        if (m_lineStart && Peek() >= 0)
            Decide_Line();
        const qsizetype end =
            Find(m_buf.constData(), m_pos, m_buf.size(), [](char c) { return c == '"' || Is_Line_End(c); });
        if (end < m_buf.size()) {
            Add_Bytes(field, m_buf.constData() + m_pos, end - m_pos);
            m_pos = end + 1;
            if (m_buf.at(end) == '"')
                break;
            // A line end inside the quotes is part of the field, and the next line is judged afresh.
            Add_Bytes(field, m_buf.constData() + end, 1);
            m_lineStart = true;
            continue;
        }
        if (!Carry_On(field))
            return;
    }
    // Whatever follows the closing quote up to the field's end is not part of it.
    for (int c = Peek(); c >= 0 && c != ',' && !Is_Line_End(char(c)); c = Peek())
        m_pos =
            Find(m_buf.constData(), m_pos, m_buf.size(), [](char b) { return b == ',' || Is_Line_End(b); });
}

ListField ListFieldReader::Next_Field() {
    if (Eof())
        Err().Raise(errnum::InputPastEndOfFile);
    if (m_lineStart)
        Decide_Line();
    m_fieldLine = m_line;
    int c = Peek();
    while (c == ' ') {
        ++m_pos;
        c = Peek();
    }
    ListField field;
    if (c == '"')
        Read_Quoted(field);
    else if (c >= 0)
        Read_Plain(field);

    c = Peek();
    if (c == ',') {
        ++m_pos;
    } else if (c >= 0) {
        ++m_pos;
        if (c == '\r' && Peek() == '\n')
            ++m_pos;
        m_lineStart = true;
    }
    return field;
}

// ---- files -----------------------------------------------------------------------------------------------

ListFileInput::ListFileInput(const QString& path) : m_file(path), m_reader(m_file) {
    if (path.isEmpty())
        Err().Raise(errnum::BadFileNameOrNumber);
    const QFileInfo info(path);
    if (!info.exists())
        Err().Raise(errnum::FileNotFound);
    // Only a plain file: a device or a pipe could stream without end or never open, and freeze the console.
    if (!info.isFile() || !m_file.open(QIODevice::ReadOnly))
        Err().Raise(errnum::PathFileAccessError);
    m_size = m_file.size();
}

QStringList Read_List_Fields(const QByteArray& bytes) {
    QBuffer buffer;
    buffer.setData(bytes);
    buffer.open(QIODevice::ReadOnly);
    ListFieldReader reader(buffer);
    QStringList fields;
    while (!reader.Eof())
        fields.append(reader.Next_Field().Whole());
    return fields;
}

namespace {

template <typename Sink> void Write_Items(const QStringList& items, Sink sink) {
    QByteArray out;
    if (!items.isEmpty() && items.front().startsWith(QChar(0xFEFF)))
        out += kBom;
    for (const QString& item : items) {
        out += item.toUtf8();
        out += "\r\n";
        if (out.size() >= kChunk) {
            sink(out);
            out.clear();
        }
    }
    if (!out.isEmpty())
        sink(out);
}

} // namespace

QByteArray Export_Bytes(const QStringList& items) {
    QByteArray all;
    Write_Items(items, [&all](const QByteArray& piece) { all += piece; });
    return all;
}

void Write_List_File(const QString& path, const QStringList& items) {
    if (path.isEmpty())
        Err().Raise(errnum::BadFileNameOrNumber);
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        Err().Raise(errnum::PathFileAccessError);
    bool written = true;
    Write_Items(items,
                [&](const QByteArray& piece) { written = written && file.write(piece) == piece.size(); });
    file.close();
    if (!written)
        Err().Raise(errnum::PathFileAccessError);
}

} // namespace hv
