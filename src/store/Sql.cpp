#include "store/Sql.h"

#include <cstring>
#include <stdexcept>

namespace hv {

namespace {

bool Is_Identifier(const QString& name) {
    if (name.isEmpty())
        return false;
    for (qsizetype i = 0; i < name.size(); ++i) {
        const QChar c = name.at(i);
        const bool letter = (c >= u'A' && c <= u'Z') || (c >= u'a' && c <= u'z') || c == u'_';
        const bool digit = c >= u'0' && c <= u'9';
        if (!letter && !(digit && i > 0))
            return false;
    }
    return true;
}

[[noreturn]] void Misbuilt(const char* why) {
    throw std::logic_error(std::string("hv::Sql: ") + why);
}

// The checks a literal piece must pass against the piece before it, by its first character only.
void Check_Literal_Follows(bool afterText, QChar first) {
    // A text slot's value ends at the quote that opens the next literal piece.
    if (afterText && first != u'\'')
        Misbuilt("a text slot must be followed by a closing quote");
    if (!afterText && first == u'\'')
        Misbuilt("a number slot stands bare, without quotes");
}
} // namespace

Sql& Sql::lit(const QString& literal) {
    if (literal.isEmpty())
        return *this;
    if (!m_pieces.empty()) {
        Piece& last = m_pieces.back();
        if (last.kind == Piece::Literal) {
            last.text += literal;
            return *this;
        }
        Check_Literal_Follows(last.kind == Piece::Text, literal.front());
    }
    m_pieces.push_back(Piece{Piece::Literal, literal, 0});
    return *this;
}

Sql& Sql::operator<<(const char* literal) {
    // Statement texts are ASCII, and a batch builds thousands of statements: ASCII pieces are appended
    // in place, without a temporary string.
    const size_t length = std::strlen(literal);
    bool ascii = true;
    for (size_t i = 0; i < length && ascii; ++i)
        ascii = static_cast<unsigned char>(literal[i]) < 0x80;
    if (!ascii)
        return lit(QString::fromUtf8(literal, qsizetype(length)));
    if (length == 0)
        return *this;
    const QLatin1StringView view(literal, qsizetype(length));
    if (!m_pieces.empty()) {
        Piece& last = m_pieces.back();
        if (last.kind == Piece::Literal) {
            last.text.append(view);
            return *this;
        }
        Check_Literal_Follows(last.kind == Piece::Text, QChar(view.front()));
        m_pieces.push_back(Piece{Piece::Literal, QString(view), 0});
        return *this;
    }
    // The opening piece grows as identifiers and further literals join it; one allocation serves.
    m_pieces.reserve(8);
    QString first;
    first.reserve(view.size() + 96);
    first.append(view);
    m_pieces.push_back(Piece{Piece::Literal, std::move(first), 0});
    return *this;
}

Sql& Sql::operator<<(const SqlText& v) {
    if (m_pieces.empty() || m_pieces.back().kind != Piece::Literal || !m_pieces.back().text.endsWith(u'\''))
        Misbuilt("a text slot must follow an opening quote");
    m_pieces.push_back(Piece{Piece::Text, v.value, 0});
    return *this;
}

Sql& Sql::operator<<(const SqlNumber& v) {
    if (!m_pieces.empty()) {
        const Piece& last = m_pieces.back();
        if (last.kind == Piece::Text)
            Misbuilt("a text slot must be followed by a closing quote");
        if (last.kind == Piece::Literal && last.text.endsWith(u'\''))
            Misbuilt("a number slot stands bare, without quotes");
    }
    m_pieces.push_back(Piece{Piece::Number, QString(), v.value});
    return *this;
}

Sql& Sql::operator<<(const SqlIdent& v) {
    if (!Is_Identifier(v.name))
        Misbuilt("not a plain identifier");
    return lit(v.name);
}

QString Sql::Literal_Text() const {
    if (!m_pieces.empty() && m_pieces.back().kind == Piece::Text)
        Misbuilt("a text slot must be followed by a closing quote");
    QString out;
    for (const Piece& p : m_pieces) {
        switch (p.kind) {
        case Piece::Literal:
        case Piece::Text:
            out += p.text;
            break;
        case Piece::Number:
            out += QString::number(p.number);
            break;
        }
    }
    return out;
}

QString Sql::Bound_Text() const {
    if (!m_pieces.empty() && m_pieces.back().kind == Piece::Text)
        Misbuilt("a text slot must be followed by a closing quote");
    qsizetype size = 0;
    for (const Piece& p : m_pieces)
        size += p.kind == Piece::Literal ? p.text.size() : 1;
    QString out;
    out.reserve(size);
    for (size_t i = 0; i < m_pieces.size(); ++i) {
        const Piece& p = m_pieces[i];
        if (p.kind != Piece::Literal) {
            out += u'?';
            continue;
        }
        QStringView text(p.text);
        // The quotes around a text slot belong to the literal form only.
        if (i > 0 && m_pieces[i - 1].kind == Piece::Text)
            text = text.mid(1);
        if (i + 1 < m_pieces.size() && m_pieces[i + 1].kind == Piece::Text)
            text.chop(1);
        out += text;
    }
    return out;
}

std::vector<QVariant> Sql::Values() const {
    std::vector<QVariant> values;
    values.reserve(m_pieces.size() / 2 + 1);
    for (const Piece& p : m_pieces) {
        if (p.kind == Piece::Text)
            values.emplace_back(p.text);
        else if (p.kind == Piece::Number)
            values.emplace_back(p.number);
    }
    return values;
}

bool Sql::Has_Quote_In_Text() const {
    for (const Piece& p : m_pieces) {
        if (p.kind == Piece::Text && p.text.contains(u'\''))
            return true;
    }
    return false;
}

} // namespace hv
