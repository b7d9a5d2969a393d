# Turns a text file into a C++ source: cmake -DINPUT=... -DOUTPUT=... -P embed_text.cmake
file(READ "${INPUT}" text)
file(WRITE "${OUTPUT}" "// Made from ${INPUT}.
#include \"simhost/host_description.h\"

namespace simhost {

std::string_view BuiltinHostText() { return R\"builtin(${text})builtin\"; }

}  // namespace simhost
")
