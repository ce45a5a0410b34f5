// The scenario parser against any bytes at all: it ends, and when it reads a file, its commands stand in
// the order of their lines, each within the file, each with a word, and each line read again alone gives
// the same words.
#include "drive/Script.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace {

void Require(bool holds, const char* what) {
    if (!holds) {
        std::fprintf(stderr, "property broken: %s\n", what);
        std::abort();
    }
}

bool Same(const hv::drive::Word& a, const hv::drive::Word& b) {
    return a.text == b.text && a.bytes == b.bytes && a.quoted == b.quoted && a.contains == b.contains;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const QByteArray content(reinterpret_cast<const char*>(data), qsizetype(size));
    std::vector<hv::drive::Command> commands;
    hv::drive::ParseError error;
    if (!hv::drive::Parse_Script(content, commands, error)) {
        Require(error.line >= 1 && error.line <= content.count('\n') + 1, "an error outside the file");
        return 0;
    }
    int last = 0;
    for (const hv::drive::Command& c : commands) {
        Require(c.line > last && c.line <= content.count('\n') + 1, "a command out of order");
        last = c.line;
        Require(!c.words.empty(), "a command without words");
        std::vector<hv::drive::Word> again;
        QString reason;
        Require(hv::drive::Split_Line(c.source, again, reason), "a command's own line refused");
        Require(again.size() == c.words.size(), "a command's own line split otherwise");
        for (size_t i = 0; i < again.size(); ++i)
            Require(Same(again[i], c.words[i]), "a command's own line read otherwise");
    }
    return 0;
}
