#include "store/clsFile.h"

#include "core/ListFile.h"
#include "platform/Err.h"

#include <QFile>
#include <QFileInfo>

namespace hv {

long clsFile::AppendToFile(const QString& strPath, const QString& strText) {
    if (strPath.isEmpty())
        Err().Raise(errnum::BadFileNameOrNumber);
    QFile file(strPath);
    if (QFileInfo(strPath).isDir() || !file.open(QIODevice::WriteOnly | QIODevice::Append))
        Err().Raise(errnum::PathFileAccessError);
    const QByteArray line = strText.toUtf8() + QByteArrayLiteral("\r\n");
    const bool written = file.write(line) == line.size();
    file.close();
    if (!written)
        Err().Raise(errnum::PathFileAccessError);
    return 0;
}

long clsFile::GetFromFile(const QString& strPath, QString& strText) {
    ListFileInput file(strPath);
    strText.clear();
    while (!file.Reader().Eof())
        strText = file.Reader().Next_Field().Whole();
    return 0;
}

} // namespace hv
