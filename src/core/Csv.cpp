#include "core/Csv.h"

namespace hv {

namespace {

bool Needs_Quotes(const QString& field) {
    for (QChar c : field)
        if (c == u',' || c == u'"' || c == u'\r' || c == u'\n')
            return true;
    return false;
}

} // namespace

void Csv_Record(BufferedFile& out, const QString* fields, int count) {
    for (int i = 0; i < count; ++i) {
        if (i > 0)
            out.Put(',');
        const QString& field = fields[i];
        if (!Needs_Quotes(field)) {
            out.Put(QStringView(field));
            continue;
        }
        out.Put('"');
        qsizetype from = 0;
        for (qsizetype q = field.indexOf(u'"'); q >= 0; q = field.indexOf(u'"', q + 1)) {
            out.Put(QStringView(field).mid(from, q + 1 - from));
            out.Put('"');
            from = q + 1;
        }
        out.Put(QStringView(field).mid(from));
        out.Put('"');
    }
    out.Put(QLatin1StringView("\r\n"));
}

} // namespace hv
