#include "core/ListFile.h"

#include "platform/Err.h"

#include <QByteArrayView>
#include <QFile>
#include <QFileInfo>

namespace hv {

namespace {

// Windows-1252 from 0x80 to 0x9F; the rest of the code page is Latin-1.
constexpr char16_t kCp1252High[32] = {0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                      0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                      0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                      0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

constexpr char kBom[] = "\xEF\xBB\xBF";

bool Is_Blank(char c) {
    return c == ' ' || c == '\t';
}
bool Is_Line_End(char c) {
    return c == '\r' || c == '\n';
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

QString Decode_List_Text(const QByteArray& bytes) {
    if (!QByteArrayView(bytes).isValidUtf8())
        return Decode_Windows_1252(bytes.constData(), bytes.size());
    const qsizetype skip = bytes.startsWith(kBom) ? 3 : 0;
    return QString::fromUtf8(bytes.constData() + skip, bytes.size() - skip);
}

ListFieldReader::ListFieldReader(QByteArray bytes) : m_bytes(std::move(bytes)) {
    m_utf8 = QByteArrayView(m_bytes).isValidUtf8();
    if (m_utf8 && m_bytes.startsWith(kBom))
        m_pos = 3;
}

qsizetype ListFieldReader::Field_Estimate() const {
    qsizetype ends = m_bytes.count('\n');
    if (ends == 0)
        ends = m_bytes.count('\r');
    return ends + m_bytes.count(',') + 1;
}

QString ListFieldReader::Text(qsizetype start, qsizetype end) const {
    const char* p = m_bytes.constData() + start;
    return m_utf8 ? QString::fromUtf8(p, end - start) : Decode_Windows_1252(p, end - start);
}

void ListFieldReader::Skip_Line_End() {
    const char* d = m_bytes.constData();
    if (m_pos < m_bytes.size() && d[m_pos] == '\r')
        ++m_pos;
    if (m_pos < m_bytes.size() && d[m_pos] == '\n')
        ++m_pos;
}

QString ListFieldReader::Next_Field() {
    if (Eof())
        Err().Raise(errnum::InputPastEndOfFile);
    const char* d = m_bytes.constData();
    const qsizetype n = m_bytes.size();
    while (m_pos < n && Is_Blank(d[m_pos]))
        ++m_pos;

    QString field;
    if (m_pos < n && d[m_pos] == '"') {
        const qsizetype start = ++m_pos;
        while (m_pos < n && d[m_pos] != '"')
            ++m_pos;
        field = Text(start, m_pos);
        if (m_pos < n)
            ++m_pos; // the closing quote
        // Whatever follows the closing quote up to the field's end is not part of it.
        while (m_pos < n && d[m_pos] != ',' && !Is_Line_End(d[m_pos]))
            ++m_pos;
    } else {
        const qsizetype start = m_pos;
        while (m_pos < n && d[m_pos] != ',' && !Is_Line_End(d[m_pos]))
            ++m_pos;
        field = Text(start, m_pos);
    }

    if (m_pos < n) {
        if (d[m_pos] == ',')
            ++m_pos;
        else
            Skip_Line_End();
    }
    return field;
}

QStringList Read_List_Fields(const QByteArray& bytes) {
    QStringList fields;
    ListFieldReader reader(bytes);
    while (!reader.Eof())
        fields.append(reader.Next_Field());
    return fields;
}

QByteArray Export_Bytes(const QStringList& items) {
    QByteArray out;
    for (const QString& item : items) {
        out += item.toUtf8();
        out += "\r\n";
    }
    return out;
}

QByteArray Read_List_File(const QString& path) {
    if (path.isEmpty())
        Err().Raise(errnum::BadFileNameOrNumber);
    QFileInfo info(path);
    if (!info.exists())
        Err().Raise(errnum::FileNotFound);
    QFile file(path);
    if (info.isDir() || !file.open(QIODevice::ReadOnly))
        Err().Raise(errnum::PathFileAccessError);
    // One read into a buffer of the file's size: block lists run to megabytes.
    QByteArray bytes(file.size(), Qt::Uninitialized);
    const qint64 got = file.read(bytes.data(), bytes.size());
    file.close();
    if (got < 0)
        Err().Raise(errnum::PathFileAccessError);
    bytes.truncate(got);
    return bytes;
}

void Write_List_File(const QString& path, const QStringList& items) {
    if (path.isEmpty())
        Err().Raise(errnum::BadFileNameOrNumber);
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        Err().Raise(errnum::PathFileAccessError);
    const QByteArray bytes = Export_Bytes(items);
    const bool written = file.write(bytes) == bytes.size();
    file.close();
    if (!written)
        Err().Raise(errnum::PathFileAccessError);
}

} // namespace hv
