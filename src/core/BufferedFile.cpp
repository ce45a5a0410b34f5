#include "core/BufferedFile.h"

#include "platform/Err.h"

#include <cstring>

namespace hv {

BufferedFile::BufferedFile(const QString& fileName, Mode mode) : m_file(fileName), m_buffer(size_t(kBlock)) {
    if (fileName.isEmpty())
        Err().Raise(errnum::BadFileNameOrNumber);
    const QIODevice::OpenMode how = mode == Append ? QIODevice::WriteOnly | QIODevice::Append
                                                   : QIODevice::WriteOnly | QIODevice::Truncate;
    if (!m_file.open(how | QIODevice::Unbuffered))
        Err().Raise(errnum::PathFileAccessError);
    m_pos = m_buffer.data();
}

void BufferedFile::Put(QLatin1StringView markup) {
    char* out = Room(markup.size());
    std::memcpy(out, markup.data(), size_t(markup.size()));
    m_pos = out + markup.size();
}

void BufferedFile::Put(QStringView text) {
    const qsizetype n = text.size();
    char* out = Room(n * 3);
    const char16_t* in = text.utf16();
    qsizetype i = 0;
    for (; i < n && in[i] < 0x80; ++i)
        *out++ = char(in[i]);
    if (i < n)
        out = m_encoder.appendToBuffer(out, text.mid(i));
    m_pos = out;
}

void BufferedFile::Close() {
    Write_Out();
    m_file.close();
}

char* BufferedFile::Room(qsizetype size) {
    if (m_buffer.data() + m_buffer.size() - m_pos >= size)
        return m_pos;
    Write_Out();
    if (qsizetype(m_buffer.size()) < size) {
        m_buffer.resize(size_t(size));
        m_pos = m_buffer.data();
    }
    return m_pos;
}

void BufferedFile::Write_Out() {
    const qint64 used = m_pos - m_buffer.data();
    if (used > 0 && m_file.write(m_buffer.data(), used) != used)
        Err().Raise(errnum::PathFileAccessError);
    m_pos = m_buffer.data();
}

} // namespace hv
