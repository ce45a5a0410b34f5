#pragma once
// General text file helpers. Each call opens, uses and closes its file. A file error (a missing file,
// a path that cannot be opened) is raised to the caller as the current run-time error.
#include <QString>

namespace hv {

class clsFile final {
public:
    // Appends the text and a line end (CR LF) to the file, creating it when missing. Returns 0.
    long AppendToFile(const QString& strPath, const QString& strText);
    // Reads the file item by item, as the list files are read (an item ends at a comma or a line end,
    // a quoted item keeps its commas), each item overwriting the one before: strText is left holding the
    // last item of the file, or an empty text for an empty file. Returns 0.
    long GetFromFile(const QString& strPath, QString& strText);
};

} // namespace hv
