// The JSON form of a result. Numbers have the shortest text that reads back as the same double.
#include <tools/corvane/output/table.h>

#include <corvane/core/version.h>

#include <nlohmann/json.hpp>

#include <cmath>

namespace cli {
namespace {
using Json = nlohmann::ordered_json;

struct ToJson {
    Json operator()(std::monostate) const { return nullptr; }
    Json operator()(double x) const { return std::isfinite(x) ? Json(x) : Json(nullptr); }
    Json operator()(long n) const { return n; }
    Json operator()(std::string const& word) const { return word; }
};

void put(Json& object, Fields const& fields) {
    for (auto const& [name, value] : fields) object[name] = std::visit(ToJson{}, value);
}
}  // namespace

std::string to_json(Heading const& heading, Table const& table) {
    Json result;
    result["program"] = "corvane";
    result["version"] = CORVANE_VERSION;
    result["schema"] = 1;  // of docs/command_line.md
    result["command"] = heading.command;
    put(result, heading.fields);
    if (!heading.composition.empty()) put(result["composition"], heading.composition);
    result["remarks"] = heading.remarks;
    result["columns"] = Json::array();
    for (Column const& column : table.columns)
        result["columns"].push_back(
            {{"name", column.name}, {"unit", column.unit}, {"text", column.text}});
    result["rows"] = Json::array();
    for (Row const& row : table.rows) {
        Json cells = Json::object();
        for (std::size_t k = 0; k < row.cells.size(); ++k)
            cells[table.columns[k].name] = std::visit(ToJson{}, row.cells[k]);
        if (!row.note.empty()) cells["note"] = row.note;
        result["rows"].push_back(cells);
    }
    if (!heading.summary.empty()) result["summary"] = heading.summary;
    for (auto const& [name, list] : heading.lists) {
        result[name] = Json::array();
        for (Fields const& fields : list) put(result[name].emplace_back(Json::object()), fields);
    }
    // Bytes that are not UTF-8 (from a data file) are replaced, not thrown at the reader.
    return result.dump(1, ' ', false, Json::error_handler_t::replace) + '\n';
}

}  // namespace cli
