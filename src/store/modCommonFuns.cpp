#include "store/modCommonFuns.h"

#include "platform/Err.h"
#include "platform/Platform.h"

#include <QRegularExpression>
#include <cmath>
#include <limits>

namespace hv {

namespace {
// Only the space character counts as a blank; tabs and other white space pass.
bool Has_Blank(const QString& s) {
    return s.contains(QLatin1Char(' '), Qt::CaseSensitive);
}
bool Has_Apostrophe(const QString& s) {
    return s.contains(QLatin1Char('\''));
}
// A character outside the basic plane is one character, not two.
qsizetype Length(const QString& s) {
    return s.toUcs4().size();
}
} // namespace

bool Is_Valid_User_Name(const QString& strName) {
    return Length(strName) >= 1 && Length(strName) <= 255 && !Has_Apostrophe(strName);
}

bool Is_Valid_Password(const QString& strPassword) {
    return Length(strPassword) >= 1 && Length(strPassword) <= 20 && !Has_Apostrophe(strPassword);
}

bool Is_Valid_Server_Name(const QString& strServer) {
    return Length(strServer) >= 1 && Length(strServer) <= 100 && !Has_Blank(strServer);
}

// No upper end here: the entry field's own maximum length holds it.
bool Is_Valid_File_Extension(const QString& strExtn) {
    return Length(strExtn) >= 2 && !Has_Blank(strExtn);
}

bool Is_Valid_Email_Address(const QString& strEmail) {
    return Length(strEmail) >= 1 && Length(strEmail) <= 50 && !Has_Blank(strEmail);
}

bool Is_Valid_Url(const QString& strUrl) {
    return !Has_Blank(strUrl);
}

bool Is_Valid_Port(long lngPort) {
    return lngPort >= 0 && lngPort <= 65535;
}

bool Is_Valid_Window_Title(const QString& /*strTitle*/) {
    return true;
}

QString Bytes_To_Text(const QByteArray& bytes) {
    // Latin-1 maps each byte to the character of the same code, so the text keeps every byte in place.
    return QString::fromLatin1(bytes.constData(), bytes.size());
}

QString Get_Windows_User_Name() {
    return platform().User_Name();
}

QString Trim_Blanks(const QString& text) {
    qsizetype start = 0;
    qsizetype end = text.size();
    while (start < end && text[start] == u' ')
        ++start;
    while (end > start && text[end - 1] == u' ')
        --end;
    return (start == 0 && end == text.size()) ? text : text.mid(start, end - start);
}

long Text_To_Long(const QString& text) {
    static const QRegularExpression number(QStringLiteral("^ *([+-]?)(\\d*)(?:\\.(\\d*))? *$"));
    const QRegularExpressionMatch m = number.match(text);
    if (!m.hasMatch() || (m.captured(2).isEmpty() && m.captured(3).isEmpty()))
        Err().Raise(errnum::TypeMismatch);
    const QString digits = m.captured(2).isEmpty() ? QStringLiteral("0") : m.captured(2);
    const QString fraction = m.captured(3);
    bool ok = false;
    double value = (digits + u'.' + (fraction.isEmpty() ? QStringLiteral("0") : fraction)).toDouble(&ok);
    if (!ok)
        Err().Raise(errnum::TypeMismatch);
    if (m.captured(1) == u"-")
        value = -value;
    // Halves go to the even neighbour.
    const double rounded = std::nearbyint(value);
    if (rounded > double(std::numeric_limits<qint32>::max()) ||
        rounded < double(std::numeric_limits<qint32>::min()))
        Err().Raise(errnum::Overflow);
    return long(rounded);
}

namespace {
bool Is_Word_Char(QChar c) {
    return c.isLetterOrNumber() || c == u'_';
}
} // namespace

bool Is_Whole_Word_End(const QString& text, qsizetype length) {
    return length == text.size() || Is_Word_Char(text[length - 1]) != Is_Word_Char(text[length]);
}

bool Begins_With_Whole_Word(const QString& text, const QString& searched) {
    if (searched.isEmpty() || searched.size() > text.size())
        return false;
    return text.startsWith(searched, Qt::CaseInsensitive) && Is_Whole_Word_End(text, searched.size());
}

} // namespace hv
