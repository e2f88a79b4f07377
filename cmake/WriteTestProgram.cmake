# cmake -D OUTPUT=<file> -D SOURCES=<file>;... -P WriteTestProgram.cmake
#
# Writes the source of a program that is each of these test programs: the one by whose name it is
# started. Each has a namespace of its own, so that two may name their helpers alike; what they
# include comes before, as does what moc's output does. What a directive needs has to be in it, or
# in a header.

set(includes "")
set(namespaces "")
set(choices "")
foreach(source IN LISTS SOURCES)
    cmake_path(GET source STEM name)
    file(STRINGS "${source}" directives REGEX "^#(include|if|elif|else|endif)")
    list(FILTER directives EXCLUDE REGEX "\\.moc\"$")
    list(JOIN directives "\n" directives)
    string(APPEND includes "${directives}\n")
    string(APPEND namespaces "namespace ${name} {\n#include \"${name}.cpp\"\n}\n")
    string(APPEND choices
        "    if (name == \"${name}\")\n        return ${name}::main(argc, argv);\n"
    )
endforeach()

file(
    WRITE "${OUTPUT}"
    "${includes}
#include <QtCore/qmetatype.h>
#if __has_include(<QtCore/qtmochelpers.h>)
#include <QtCore/qtmochelpers.h>
#endif
#if __has_include(<QtCore/qxptype_traits.h>)
#include <QtCore/qxptype_traits.h>
#endif

#include <cstdio>
#include <memory>
#include <string_view>

${namespaces}
int main(int argc, char* argv[]) {
    std::string_view name = argv[0];
    name.remove_prefix(name.rfind('/') + 1);
${choices}    std::fprintf(stderr, \"%s isn't the name of a test\\n\", argv[0]);
    return 1;
}
"
)
