// The list file reader against any bytes at all. Whatever a file holds, reading it ends, keeps each field
// within its bound and never leaves half a surrogate pair; and for every rule list, the rules an import
// takes from the bytes come back unchanged when they are exported and imported again (all but those the
// format cannot carry: a comma or a line end inside, or blanks at the end that the import trims).
#include "core/ListFile.h"
#include "filters/model/RuleLists.h"

#include <QBuffer>
#include <cstdint>
#include <cstdlib>
#include <cstdio>

namespace {

void Require(bool holds, const char* what) {
    if (!holds) {
        std::fprintf(stderr, "property broken: %s\n", what);
        std::abort();
    }
}

std::vector<hv::ListField> Read(const QByteArray& bytes) {
    QBuffer buffer;
    buffer.setData(bytes);
    buffer.open(QIODevice::ReadOnly);
    hv::ListFieldReader reader(buffer);
    std::vector<hv::ListField> fields;
    while (!reader.Eof())
        fields.push_back(reader.Next_Field());
    Require(reader.Bytes_Read() <= bytes.size(), "progress beyond the file");
    return fields;
}

QStringList Import(const std::vector<hv::ListField>& fields, const hv::RuleListSpec& spec) {
    QStringList rules;
    for (const hv::ListField& field : fields)
        if (const auto rule = hv::Import_Rule(field, spec))
            rules << *rule;
    return rules;
}

bool Carried_By_The_Format(const QString& rule) {
    return !rule.contains(u',') && !rule.contains(u'\r') && !rule.contains(u'\n') && !rule.endsWith(u' ');
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const QByteArray bytes(reinterpret_cast<const char*>(data), qsizetype(size));
    const std::vector<hv::ListField> fields = Read(bytes);
    for (const hv::ListField& field : fields) {
        Require(field.text.size() <= hv::ListField::kKeep, "a field beyond its bound");
        Require(field.text.isEmpty() || !field.text.back().isHighSurrogate(), "half a surrogate pair");
        Require(field.nul || !field.text.contains(QChar(0)), "a NUL not told");
    }
    for (const hv::RuleListSpec* spec : {&hv::rulelists::Black(), &hv::rulelists::File(), &hv::rulelists::Pop3(),
                                         &hv::rulelists::Exe(), &hv::rulelists::Window()}) {
        QStringList rules;
        for (const QString& rule : Import(fields, *spec))
            if (Carried_By_The_Format(rule))
                rules << rule;
        for (const QString& rule : rules)
            Require(!rule.contains(QChar(0)), "a NUL imported");
        Require(Import(Read(hv::Export_Bytes(rules)), *spec) == rules, "export then import changed the rules");
    }
    return 0;
}
