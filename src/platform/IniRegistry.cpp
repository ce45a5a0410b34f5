#include "platform/IniRegistry.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <vector>

namespace hv {

namespace {

struct Entry {
    QString name;
    QString typed; // "sz:...", "dword:...", "hex:..."
};

struct Section {
    QString path;
    std::vector<Entry> values;
};

using Hive = std::vector<Section>;

// Percent-escapes the few characters that would break a line, a section or a name.
QString Escape(const QString& s, const QString& special) {
    QString out;
    out.reserve(s.size());
    for (QChar c : s) {
        if (c == u'%' || c == u'\r' || c == u'\n' || special.contains(c))
            out += QStringLiteral("%%1").arg(int(c.unicode()), 2, 16, QLatin1Char('0')).toUpper();
        else
            out += c;
    }
    return out;
}

QString Unescape(const QString& s) {
    QString out;
    out.reserve(s.size());
    for (qsizetype i = 0; i < s.size(); ++i) {
        if (s[i] == u'%' && i + 2 < s.size()) {
            bool ok = false;
            const int code = s.mid(i + 1, 2).toInt(&ok, 16);
            if (ok) {
                out += QChar(code);
                i += 2;
                continue;
            }
        }
        out += s[i];
    }
    return out;
}

QString Normal_Path(const QString& keyPath) {
    QString p = keyPath;
    while (p.startsWith(u'\\'))
        p.remove(0, 1);
    while (p.endsWith(u'\\'))
        p.chop(1);
    return p;
}

Hive Load(const QString& fileName) {
    Hive hive;
    QFile f(fileName);
    if (!f.open(QIODevice::ReadOnly))
        return hive;
    const QStringList lines = QString::fromUtf8(f.readAll()).split(u'\n');
    for (QString line : lines) {
        if (line.endsWith(u'\r'))
            line.chop(1);
        if (line.isEmpty() || line.startsWith(u';'))
            continue;
        if (line.startsWith(u'[') && line.endsWith(u']')) {
            hive.push_back(Section{Unescape(line.mid(1, line.size() - 2)), {}});
            continue;
        }
        const qsizetype eq = line.indexOf(u'=');
        if (eq < 0 || hive.empty())
            continue;
        hive.back().values.push_back(Entry{Unescape(line.left(eq)), Unescape(line.mid(eq + 1))});
    }
    return hive;
}

bool Save(const QString& fileName, const Hive& hive) {
    QString text;
    for (const Section& s : hive) {
        text += u'[' + Escape(s.path, QStringLiteral("]")) + QStringLiteral("]\n");
        for (const Entry& e : s.values)
            text += Escape(e.name, QStringLiteral("=;[")) + u'=' + Escape(e.typed, QString(QChar(0))) + u'\n';
        text += u'\n';
    }
    QDir().mkpath(QFileInfo(fileName).absolutePath());
    QSaveFile f(fileName);
    if (!f.open(QIODevice::WriteOnly))
        return false;
    f.write(text.toUtf8());
    return f.commit();
}

Section* Find_Section(Hive& hive, const QString& path) {
    for (Section& s : hive)
        if (s.path.compare(path, Qt::CaseInsensitive) == 0)
            return &s;
    return nullptr;
}

Entry* Find_Entry(Section& s, const QString& name) {
    for (Entry& e : s.values)
        if (e.name.compare(name, Qt::CaseInsensitive) == 0)
            return &e;
    return nullptr;
}

// Creating a key creates the keys above it, as on Windows.
Section& Make_Section(Hive& hive, const QString& path) {
    const QStringList parts = path.split(u'\\');
    QString sofar;
    for (const QString& part : parts) {
        sofar = sofar.isEmpty() ? part : sofar + u'\\' + part;
        if (!Find_Section(hive, sofar))
            hive.push_back(Section{sofar, {}});
    }
    return *Find_Section(hive, path);
}

} // namespace

IniRegistry::IniRegistry(const QString& fileName) : m_fileName(fileName) {}

bool IniRegistry::Key_Exists(const QString& keyPath) {
    Hive hive = Load(m_fileName);
    return Find_Section(hive, Normal_Path(keyPath)) != nullptr;
}

QStringList IniRegistry::Enum_Keys(const QString& keyPath) {
    const QString path = Normal_Path(keyPath);
    const QString prefix = path.isEmpty() ? QString() : path + u'\\';
    QStringList keys;
    for (const Section& s : Load(m_fileName)) {
        if (!s.path.startsWith(prefix, Qt::CaseInsensitive))
            continue;
        const QString rest = s.path.mid(prefix.size());
        if (!rest.isEmpty() && !rest.contains(u'\\'))
            keys << rest;
    }
    return keys;
}

std::optional<QString> IniRegistry::Typed(const QString& keyPath, const QString& name) {
    Hive hive = Load(m_fileName);
    Section* s = Find_Section(hive, Normal_Path(keyPath));
    if (!s)
        return std::nullopt;
    Entry* e = Find_Entry(*s, name);
    if (!e)
        return std::nullopt;
    return e->typed;
}

std::optional<QString> IniRegistry::Get_String(const QString& keyPath, const QString& name) {
    const auto t = Typed(keyPath, name);
    if (!t || !t->startsWith(QLatin1String("sz:")))
        return std::nullopt;
    return t->mid(3);
}

std::optional<QByteArray> IniRegistry::Get_Binary(const QString& keyPath, const QString& name) {
    const auto t = Typed(keyPath, name);
    if (!t || !t->startsWith(QLatin1String("hex:")))
        return std::nullopt;
    return QByteArray::fromHex(t->mid(4).toLatin1());
}

std::optional<quint32> IniRegistry::Get_Dword(const QString& keyPath, const QString& name) {
    const auto t = Typed(keyPath, name);
    if (!t || !t->startsWith(QLatin1String("dword:")))
        return std::nullopt;
    bool ok = false;
    const quint32 v = t->mid(6).toUInt(&ok);
    return ok ? std::optional<quint32>(v) : std::nullopt;
}

std::optional<QStringList> IniRegistry::Get_Multi_String(const QString& keyPath, const QString& name) {
    const auto t = Typed(keyPath, name);
    if (!t || !t->startsWith(QLatin1String("multi:")))
        return std::nullopt;
    QStringList items = t->mid(6).split(QChar(0));
    items.removeLast(); // the empty text after the last item's NUL
    return items;
}

std::optional<QString> IniRegistry::Get_Value_Text(const QString& keyPath, const QString& name) {
    const auto t = Typed(keyPath, name);
    if (!t)
        return std::nullopt;
    const qsizetype colon = t->indexOf(u':');
    return colon < 0 ? *t : t->mid(colon + 1);
}

bool IniRegistry::Put(const QString& keyPath, const QString& name, const QString& typed) {
    Hive hive = Load(m_fileName);
    Section& s = Make_Section(hive, Normal_Path(keyPath));
    if (Entry* e = Find_Entry(s, name))
        e->typed = typed;
    else
        s.values.push_back(Entry{name, typed});
    return Save(m_fileName, hive);
}

bool IniRegistry::Set_String(const QString& keyPath, const QString& name, const QString& value) {
    return Put(keyPath, name, QStringLiteral("sz:") + value);
}

bool IniRegistry::Set_Dword(const QString& keyPath, const QString& name, quint32 value) {
    return Put(keyPath, name, QStringLiteral("dword:") + QString::number(value));
}

bool IniRegistry::Set_Binary(const QString& keyPath, const QString& name, const QByteArray& value) {
    return Put(keyPath, name, QStringLiteral("hex:") + QString::fromLatin1(value.toHex()));
}

bool IniRegistry::Set_Multi_String(const QString& keyPath, const QString& name, const QStringList& value) {
    QString data;
    for (const QString& item : value)
        data += item + QChar(0);
    return Put(keyPath, name, QStringLiteral("multi:") + data);
}

bool IniRegistry::Create_Key(const QString& keyPath) {
    Hive hive = Load(m_fileName);
    Make_Section(hive, Normal_Path(keyPath));
    return Save(m_fileName, hive);
}

bool IniRegistry::Delete_Value(const QString& keyPath, const QString& name) {
    Hive hive = Load(m_fileName);
    Section* s = Find_Section(hive, Normal_Path(keyPath));
    if (!s)
        return false;
    const auto before = s->values.size();
    std::erase_if(s->values, [&](const Entry& e) { return e.name.compare(name, Qt::CaseInsensitive) == 0; });
    return s->values.size() != before && Save(m_fileName, hive);
}

bool IniRegistry::Delete_Key(const QString& keyPath) {
    Hive hive = Load(m_fileName);
    const QString path = Normal_Path(keyPath);
    const auto before = hive.size();
    std::erase_if(hive, [&](const Section& s) {
        return s.path.compare(path, Qt::CaseInsensitive) == 0 ||
               s.path.startsWith(path + u'\\', Qt::CaseInsensitive);
    });
    return hive.size() != before && Save(m_fileName, hive);
}

} // namespace hv
