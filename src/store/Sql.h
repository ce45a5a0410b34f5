#pragma once
// A store statement: the literal pieces of its text with typed value slots between them.
//
//   Sql("SELECT USER_ID FROM USER_TBL WHERE UPPER(USER_NAME)='") << txt(name.toUpper()) << "'"
//
// A text slot stands between two quote characters of the literal pieces; a number slot stands bare.
// Literal_Text() gives the statement as it reads with the values written in place (texts between their
// quotes, numbers in decimal), which is what tests compare. Bound_Text() gives what is prepared: every
// slot a '?', the quotes around text slots taken out, so no value can change what the statement means.
// Identifiers (table and column names from the program's own tables) are part of the literal text.
#include <QString>
#include <QVariant>
#include <vector>

namespace hv {

struct SqlText {
    QString value;
};
struct SqlNumber {
    qint64 value;
};
struct SqlIdent {
    QString name;
};

inline SqlText txt(const QString& v) {
    return SqlText{v};
}
inline SqlNumber num(qint64 v) {
    return SqlNumber{v};
}
inline SqlIdent ident(const QString& name) {
    return SqlIdent{name};
}

class Sql final {
public:
    Sql() = default;
    explicit Sql(const char* literal) { *this << literal; }

    Sql& operator<<(const char* literal);
    Sql& operator<<(const SqlText& v);
    Sql& operator<<(const SqlNumber& v);
    Sql& operator<<(const SqlIdent& v); // must be a plain identifier: letters, digits, underscore
    // A literal piece composed by the program at run time (never a user's value).
    Sql& lit(const QString& literal);

    QString Literal_Text() const;
    QString Bound_Text() const;
    // The values in slot order: QString for text slots, qint64 for number slots.
    std::vector<QVariant> Values() const;
    // True when a text value holds an apostrophe: such a statement is refused as an SQL error.
    bool Has_Quote_In_Text() const;

    struct Piece {
        enum Kind { Literal, Text, Number } kind;
        QString text;
        qint64 number = 0;
    };
    // The pieces in order, for the engine to bind the slots without copying their values.
    const std::vector<Piece>& Pieces() const { return m_pieces; }

private:
    std::vector<Piece> m_pieces;
};

} // namespace hv
