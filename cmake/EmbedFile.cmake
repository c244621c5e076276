# cmake -DFILE=... -DOUT=... -DNAME=... -P EmbedFile.cmake: a file's bytes as a C++ array
# `const std::span<const unsigned char> stylelib::NAME`.
file(READ ${FILE} bytes HEX)
string(REGEX REPLACE "(..)" "0x\\1," bytes ${bytes})
string(REGEX REPLACE "(0x..,0x..,0x..,0x..,0x..,0x..,0x..,0x..,0x..,0x..,0x..,0x..,0x..,0x..,0x..,0x..,)"
       "\\1\n" bytes ${bytes})
file(WRITE ${OUT} "#include <span>
namespace stylelib {
namespace { constexpr unsigned char kBytes[] = {
${bytes}
}; }
extern const std::span<const unsigned char> ${NAME};
const std::span<const unsigned char> ${NAME}(kBytes);
}
")
