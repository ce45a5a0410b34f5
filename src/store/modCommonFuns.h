#pragma once
// The small checks the pages make before they write, and a few text helpers. The SQL of the store
// operations carries values as they stand, so these validators are the pages' only guard for the
// fields that use them. Lengths count characters; a "blank" is the single space character only.
#include <QByteArray>
#include <QString>

namespace hv {

bool Is_Valid_User_Name(const QString& strName);      // 1..255 characters, no apostrophe
bool Is_Valid_Password(const QString& strPassword);   // 1..20 characters, no apostrophe
bool Is_Valid_Server_Name(const QString& strServer);  // 1..100 characters, no blank
bool Is_Valid_File_Extension(const QString& strExtn); // 2 or more characters, no blank
bool Is_Valid_Email_Address(const QString& strEmail); // 1..50 characters, no blank
bool Is_Valid_Url(const QString& strUrl);             // no blank; empty passes
bool Is_Valid_Port(long lngPort);                     // 0..65535
bool Is_Valid_Window_Title(const QString& strTitle);  // always true

// The platform's conversion of a text to a whole number: blanks around it, a sign, digits and a decimal
// part, which rounds half to even. Anything else (an empty text too) raises "Type mismatch" (13); a number
// beyond 32 bits raises "Overflow" (6).
long Text_To_Long(const QString& text);

// One character per byte, zero bytes included (catalogue entries are read this way).
QString Bytes_To_Text(const QByteArray& bytes);
// Trim as the program trims its texts: the space character at both ends, nothing else (tabs stay).
QString Trim_Blanks(const QString& text);
// The users' lists' own search: true when `text` begins with `searched` as a whole word, case ignored
// ("bob" finds "Bob Jones", neither "bo" nor "bobby" does; an empty text finds nothing). A word is a run of
// letters, digits and underscores.
bool Begins_With_Whole_Word(const QString& text, const QString& searched);
// True when a whole word of `text` may end after its first `length` characters.
bool Is_Whole_Word_End(const QString& text, qsizetype length);
// The operating-system user name; empty when it cannot be had.
QString Get_Windows_User_Name();

} // namespace hv
