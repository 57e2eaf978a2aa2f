#include <corvane/core/files.h>
#include <corvane/table/property_table.h>
#include <corvane/table/table_parts.h>

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <fstream>

namespace corvane {
namespace {
// 16 bytes, the length of the body, the body, its digest (FNV-1a). Numbers are little-endian.
constexpr char kMagic[17] = "corvane table 1\n";
constexpr std::size_t kFrame = 16 + 8 + 8;
static_assert(std::endian::native == std::endian::little);

std::uint64_t digest(std::string const& body) {
    std::uint64_t h = 0xcbf29ce484222325u;
    for (char c : body) h = (h ^ static_cast<unsigned char>(c)) * 0x100000001b3u;
    return h;
}

class Writer {
  public:
    template <class T>
    void put(T value) {
        body.append(reinterpret_cast<char const*>(&value), sizeof value);
    }
    template <class T>
    void put(std::vector<T> const& all) {
        put(static_cast<std::uint32_t>(all.size()));
        body.append(reinterpret_cast<char const*>(all.data()), all.size() * sizeof(T));
    }
    void put(std::string const& text) {
        put(static_cast<std::uint32_t>(text.size()));
        body += text;
    }
    void put(TableAxis const& a) {
        put(a.name), put(a.from), put(a.to), put(static_cast<std::uint32_t>(a.logarithmic));
    }
    std::string body;
};

struct Damaged {};

class Reader {
  public:
    explicit Reader(std::string const& body) : body_(body) {}
    template <class T>
    T get() {
        T value;
        std::memcpy(&value, take(sizeof value), sizeof value);
        return value;
    }
    template <class T>
    std::vector<T> all() {
        const std::size_t count = get<std::uint32_t>();
        if (count > (body_.size() - at_) / sizeof(T)) throw Damaged();
        std::vector<T> v(count);
        if (count) std::memcpy(v.data(), take(count * sizeof(T)), count * sizeof(T));
        return v;
    }
    std::string text() {
        const std::size_t size = get<std::uint32_t>();
        return {take(size), size};
    }
    TableAxis axis() {
        TableAxis a;
        a.name = text();
        a.from = get<double>();
        a.to = get<double>();
        a.logarithmic = get<std::uint32_t>() != 0;
        return a;
    }
    bool ended() const { return at_ == body_.size(); }

  private:
    char const* take(std::size_t size) {
        if (size > body_.size() - at_) throw Damaged();
        at_ += size;
        return body_.data() + at_ - size;
    }
    std::string const& body_;
    std::size_t at_ = 0;
};

std::string body_of(std::string const& path) {
    std::error_code none;
    if (!std::filesystem::is_regular_file(path, none)) throw FileError(th_cannot_open, path, "no such file");
    std::ifstream file(path, std::ios::binary);
    const std::uintmax_t size = std::filesystem::file_size(path, none);
    char magic[16] = {};
    std::uint64_t length = 0, mark = 0;
    if (!file.read(magic, 16) || std::memcmp(magic, kMagic, 16) != 0)
        throw FileError(th_cannot_open, path, "not a table of properties, or of a later version");
    file.read(reinterpret_cast<char*>(&length), sizeof length);
    if (!file || size < kFrame || length != size - kFrame) throw Damaged();
    std::string body(length, '\0');
    file.read(body.data(), static_cast<std::streamsize>(length));
    file.read(reinterpret_cast<char*>(&mark), sizeof mark);
    if (!file || mark != digest(body)) throw Damaged();
    return body;
}
}  // namespace

struct TableFile {
    static std::string body(PropertyTable const& t) {
        Writer w;
        TableDesign const& d = t.design_;
        w.put(d.a), w.put(d.b);
        w.put(static_cast<std::uint32_t>(d.columns.size()));
        for (TableColumn const& c : d.columns) w.put(c.name), w.put(c.unit);
        w.put(d.tolerance), w.put(static_cast<std::uint32_t>(d.halvings)), w.put(d.note);
        w.put(t.cells_), w.put(t.values_);
        return w.body;
    }
    static PropertyTable table(std::string const& body) {
        Reader r(body);
        PropertyTable t;
        TableDesign& d = t.design_;
        d.a = r.axis();
        d.b = r.axis();
        const auto columns = r.get<std::uint32_t>();
        for (std::uint32_t k = 0; k < columns; ++k) {
            std::string name = r.text();
            d.columns.push_back({name, r.get<double>()});
        }
        d.tolerance = r.get<double>();
        d.halvings = static_cast<int>(std::min(r.get<std::uint32_t>(), 17u));
        d.note = r.text();
        t.cells_ = r.all<int>();
        t.values_ = r.all<double>();
        check_design(d);
        // Children and leaves stand in the order of their parents, so that no walk is endless.
        std::size_t children = 1;
        for (int what : t.cells_)
            if (what > 0) {
                if (static_cast<std::size_t>(what) != children) throw Damaged();
                children += 4;
            } else if (what != -1 && what != -2 - t.leaves_++)
                throw Damaged();
        constexpr std::size_t square = PropertyTable::kOrder * PropertyTable::kOrder;
        if (children != t.cells_.size() || !r.ended() ||
            t.values_.size() != static_cast<std::size_t>(t.leaves_) * d.columns.size() * square)
            throw Damaged();
        return t;
    }
};

void PropertyTable::write(std::string const& path) const {
    const std::string body = TableFile::body(*this);
    NewFile file(path);
    Writer frame;
    frame.put(static_cast<std::uint64_t>(body.size()));
    frame.body += body;
    frame.put(digest(body));
    std::fwrite(kMagic, 1, 16, file.stream());
    std::fwrite(frame.body.data(), 1, frame.body.size(), file.stream());
    file.commit(std::ftell(file.stream()));
}

PropertyTable PropertyTable::read(std::string const& path) {
    try {
        return TableFile::table(body_of(path));
    } catch (Damaged const&) {
    } catch (FileError const&) {
        throw;
    } catch (ThException const&) {  // its design
    }
    throw FileError(th_cannot_open, path, "a damaged table of properties");
}

}  // namespace corvane
