#pragma once
// Comma-separated values as RFC 4180 has them: fields separated by commas, records ended by CR LF, a field
// that holds a comma, a double quote, CR or LF enclosed in double quotes with its quotes doubled.
#include "core/BufferedFile.h"

#include <QString>

namespace hv {

// Writes one record of `count` fields.
void Csv_Record(BufferedFile& out, const QString* fields, int count);

} // namespace hv
