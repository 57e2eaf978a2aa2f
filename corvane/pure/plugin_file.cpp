#include <corvane/core/files.h>
#include <corvane/pure/plugin_file.h>
#include <corvane/pure/plugin_registry.h>

#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <system_error>

#include <cxxabi.h>
#include <dlfcn.h>
#include <elf.h>
#include <fcntl.h>
#include <link.h>
#include <sys/stat.h>
#include <unistd.h>

namespace corvane {
namespace {
bool in_a_library(void const* address) {
    Dl_info where{};
    return address && dladdr(address, &where) && where.dli_fname;
}

bool aligned(void const* address) {
    return reinterpret_cast<std::uintptr_t>(address) % alignof(void*) == 0;
}

/// Itanium C++ ABI, 2.9.5: a class with one base at offset 0 keeps that base's type, any other with
/// bases a table of them.
bool begins_with(std::type_info const& type, std::type_info const& base) {
    if (type == base) return true;
    if (auto const* one = dynamic_cast<abi::__si_class_type_info const*>(&type))
        return begins_with(*one->__base_type, base);
    if (auto const* many = dynamic_cast<abi::__vmi_class_type_info const*>(&type))
        for (unsigned k = 0; k < many->__base_count; ++k) {
            abi::__base_class_type_info const& b = many->__base_info[k];
            if (!b.__is_virtual_p() && b.__offset() == 0 && begins_with(*b.__base_type, base))
                return true;
        }
    return false;
}
}  // namespace

PluginFile::PluginFile(std::string const& path) {
    const int descriptor = ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    exists_ = descriptor >= 0 || errno != ENOENT;
    if (descriptor < 0) {
        reason_ = std::generic_category().message(errno);
        return;
    }
    reason_ = flaw(descriptor);
    close(descriptor);
    char* real = realpath(path.c_str(), nullptr);
    if (real)
        resolved_ = real;
    else if (reason_.empty())
        reason_ = std::generic_category().message(errno);
    std::free(real);
}

std::string PluginFile::flaw(int descriptor) {
    struct stat file;
    if (fstat(descriptor, &file) != 0 || !S_ISREG(file.st_mode)) return "not a regular file";
    const auto size = static_cast<std::uint64_t>(file.st_size);
    ElfW(Ehdr) head;
    if (pread(descriptor, &head, sizeof head, 0) != sizeof head ||
        std::memcmp(head.e_ident, ELFMAG, SELFMAG) != 0 || head.e_phentsize != sizeof(ElfW(Phdr)))
        return "not a library";
    for (unsigned k = 0; k < head.e_phnum; ++k) {
        ElfW(Phdr) segment;
        const auto at = static_cast<off_t>(head.e_phoff + k * sizeof segment);
        if (at < 0 || pread(descriptor, &segment, sizeof segment, at) != sizeof segment)
            return "the file is not whole";
        if (segment.p_filesz > size || segment.p_offset > size - segment.p_filesz)
            return "the file is not whole";
    }
    return "";
}

bool detail::is_other_plugin(std::string const& name, std::string const& own) {
    if (name == own) return false;
    if (linked_factory<Model1>(name) || linked_factory<ModelN>(name)) return true;
    for (char const* place : {"./CorvaneS/libth", "./libth"})
        if (access(reading_path(place + name + ".dll").c_str(), F_OK) == 0) return true;
    return false;
}

ClassOf detail::class_of(void const* object, std::type_info const& base) {
    if (!aligned(object)) return ClassOf::other;
    auto const* table = *static_cast<void const* const* const*>(object);
    if (!aligned(table) || !in_a_library(table)) return ClassOf::other;
    // Before the functions: the offset of the object in the whole one, and the type of that.
    if (reinterpret_cast<std::intptr_t>(table[-2]) != 0) return ClassOf::other;
    if (!table[-1]) return ClassOf::unknown;
    void const* type = table[-1];
    if (!aligned(type) || !in_a_library(type) ||
        !in_a_library(*static_cast<void const* const*>(type)))
        return ClassOf::other;
    return begins_with(*static_cast<std::type_info const*>(type), base) ? ClassOf::derived
                                                                        : ClassOf::other;
}

}  // namespace corvane
