#include <corvane/core/errors.h>
#include <corvane/core/files.h>
#include <corvane/ideal/load_ideal.h>
#include <corvane/pure/model1.h>

namespace corvane {

std::string ideal_table(Model1 const& model) {
    const std::string folder = "CorvaneS/ideal/";
    if (model.eos()) try {
            std::string own =
                folder + model.eos() + '/' + model.name() + ';' + std::to_string(model.id());
            if (open_file("./" + own)) return own;
        } catch (ThException const&) {  // no table of its own
        }
    return folder + model.name();
}

std::string load_ideal(Model1& model) {
    check_name(model.name());
    std::string path = ideal_table(model);
    model.ideal.read("./" + path);
    return path;
}

}  // namespace corvane
