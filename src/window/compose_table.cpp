#include "window/compose_table.h"

#include <cstdlib>
#include <string>
#include <sys/mman.h>
#include <unistd.h>

namespace {

constexpr const char* table_variable = "XCOMPOSEFILE";

constexpr std::string_view sequences = R"(<dead_tilde> <space> : "~"
<dead_tilde> <dead_tilde> : "~"
<dead_tilde> <underscore> : "~"
<dead_acute> <space> : "'"
<dead_grave> <space> : "`"
<dead_grave> <dead_grave> : "`"
<dead_grave> <underscore> : "`"
<dead_circumflex> <space> : "^"
<dead_circumflex> <dead_circumflex> : "^"
<dead_circumflex> <slash> : "|"
<dead_diaeresis> <space> : "\""
<dead_doubleacute> <space> : "\""
<dead_belowcomma> <space> : ","
<dead_belowcomma> <dead_belowcomma> : ","
<dead_stroke> <space> : "/"
<dead_stroke> <dead_stroke> : "/"
<dead_currency> <S> : "$"
<Multi_key> <apostrophe> <space> : "'"
<Multi_key> <space> <apostrophe> : "'"
<Multi_key> <grave> <space> : "`"
<Multi_key> <space> <grave> : "`"
<Multi_key> <asciicircum> <space> : "^"
<Multi_key> <space> <asciicircum> : "^"
<Multi_key> <greater> <space> : "^"
<Multi_key> <space> <greater> : "^"
<Multi_key> <asciitilde> <space> : "~"
<Multi_key> <space> <asciitilde> : "~"
<Multi_key> <minus> <space> : "~"
<Multi_key> <space> <minus> : "~"
<Multi_key> <plus> <plus> : "#"
<Multi_key> <A> <T> : "@"
<Multi_key> <parenleft> <parenleft> : "["
<Multi_key> <parenright> <parenright> : "]"
<Multi_key> <parenleft> <minus> : "{"
<Multi_key> <minus> <parenleft> : "{"
<Multi_key> <parenright> <minus> : "}"
<Multi_key> <minus> <parenright> : "}"
<Multi_key> <slash> <slash> : "\\"
<Multi_key> <slash> <less> : "\\"
<Multi_key> <less> <slash> : "\\"
<Multi_key> <slash> <asciicircum> : "|"
<Multi_key> <asciicircum> <slash> : "|"
<Multi_key> <V> <L> : "|"
<Multi_key> <L> <V> : "|"
<Multi_key> <v> <l> : "|"
<Multi_key> <l> <v> : "|"
<Multi_key> <L> <T> : "<"
<Multi_key> <l> <t> : "<"
<Multi_key> <G> <T> : ">"
<Multi_key> <g> <t> : ">"
)";

bool user_has_a_table() {
    if (std::getenv(table_variable)) return true;
    const char* home = std::getenv("HOME");
    return home && ::access((std::string(home) + "/.XCompose").c_str(), F_OK) == 0;
}

// A file without a name that holds the table; not open when there can be none.
Descriptor file_with_table() {
    Descriptor file(::memfd_create("compose", MFD_CLOEXEC));
    const auto size = static_cast<ssize_t>(sequences.size());
    if (!file.open() || ::write(file.number(), sequences.data(), sequences.size()) != size) return Descriptor(-1);
    return file;
}

} // namespace

std::string_view small_compose_table() { return sequences; }

SmallComposeTable::SmallComposeTable() : file_(user_has_a_table() ? Descriptor(-1) : file_with_table()) {
    if (!file_.open()) return;
    const std::string path = "/proc/self/fd/" + std::to_string(file_.number());
    if (::access(path.c_str(), R_OK) == 0) ::setenv(table_variable, path.c_str(), 1);
}

// Taken back, because programs that this one starts are to have their own.
SmallComposeTable::~SmallComposeTable() {
    if (file_.open()) ::unsetenv(table_variable);
}
