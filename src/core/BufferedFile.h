#pragma once
// A text file written through one large buffer: texts go out as UTF-8 (mostly ASCII, copied as it
// stands), in blocks, so a file of millions of pieces costs a few hundred writes. A file that cannot be
// opened or written raises "Path/File access error" (75); an empty name "Bad file name or number" (52).
#include <QFile>
#include <QStringEncoder>
#include <QStringView>

#include <vector>

namespace hv {

class BufferedFile final {
public:
    enum Mode { Replace, Append };
    BufferedFile(const QString& fileName, Mode mode);
    BufferedFile(const BufferedFile&) = delete;
    BufferedFile& operator=(const BufferedFile&) = delete;

    void Put(QLatin1StringView markup);
    void Put(QStringView text);
    void Put(char c) { *Room(1) = c, ++m_pos; }
    // Writes out what the buffer holds and closes the file.
    void Close();

private:
    static constexpr qsizetype kBlock = 1 << 20;
    // Room for `size` more bytes at m_pos, writing the buffer out first when it is short of it.
    char* Room(qsizetype size);
    void Write_Out();

    QFile m_file;
    std::vector<char> m_buffer;
    char* m_pos = nullptr;
    QStringEncoder m_encoder{QStringEncoder::Utf8, QStringConverter::Flag::Stateless};
};

} // namespace hv
