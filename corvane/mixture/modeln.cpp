// Components, pair tables, files and reports of a mixture.
#include <corvane/core/collected.h>
#include <corvane/core/files.h>
#include <corvane/mixture/loading.h>
#include <corvane/mixture/modeln.h>
#include <corvane/mixture/theory_parameters.h>
#include <corvane/pure/attach.h>
#include <corvane/pure/model1.h>
#include <corvane/pure/plugin_file.h>

#include <cctype>
#include <string>
#include <utility>

namespace {
constexpr int kCommentRead = 79;
constexpr int kMaxComponents = 10000;  // 5·10^7 pairs, far from where their count overflows

struct Header {  // what a pair file says of one of its components
    char name[th_namelength] = {};
    int id = 0;
};

/// A component's name and id, to be put back.
struct Identity {
    Identity(Model1 const& m) : name(m.name()), id(m.id()) {}
    void restore(Model1& m) const {
        m.name(name.c_str());
        m.id(id);
    }
    std::string name;
    int id;
};

void adopt(Model1& component, FILE* f) {
    Header header;
    if (std::fscanf(f, "%*s\t%31s", header.name) == 1) {
        corvane::check_name(header.name);
        component.name(header.name);
    }
    // Nine digits: more could leave the range of an int.
    if (std::fscanf(f, "%*s\t%9d", &header.id) != 1)
        corvane::malformed(f, "the number of a component's parameter set is missing");
    const int next = std::getc(f);
    if (std::isdigit(next)) corvane::malformed(f, "the number of a parameter set is too long");
    std::ungetc(next, f);
    if (component.id() != -1 && component.id() != header.id) throw ThException(th_id_mismatch);
    component.id(header.id);
}

std::string pair_path(Model1 const& a, Model1 const& b, int id, char const* eos, char const* mth,
                      char const* root) {
    corvane::check_name(a.name());
    corvane::check_name(b.name());
    return corvane::path_of("%s/%s/%s/%s+%s;%d", root, eos, mth, a.name(), b.name(), id);
}

/// Before any pair is read: pairs loaded before a failure stay loaded.
void refuse_other(ModelN const& model, char const* eos, char const* mth) {
    if (!model.eos || !model.mth) return;
    const std::string asked = std::string(eos) + '+' + mth;
    const std::string own = std::string(model.eos) + '+' + model.mth;
    if (corvane::is_other_plugin(asked, own))
        throw corvane::FileError(th_cannot_open, "", "parameters of " + asked + ", not " + own);
}
}  // namespace

void ModelN::alloc(int n, char const* equation) {
    if (n > kMaxComponents) throw ThException(th_out_of_range);
    if (n < 0) n = 0;
    eos = equation;
    mdl1.size(n);
    for (int i = 0; i < mdl1.size(); ++i) mdl1[i] = nullptr;
    for (int i = 0; i < mdl1.size(); ++i) mdl1[i] = attach1(equation);
    const std::size_t pairs = n > 1 ? static_cast<std::size_t>(n * (n - 1) / 2) : 0;
    pair_ids_ = std::make_unique<int[]>(pairs);
    pair_comments_ = std::make_unique<PairComment[]>(pairs);
    par_alloc();
}

int ModelN::id(int i, int j) const {
    return i == j ? mdl1[i]->id() : pair_ids_[pair(i, j)];
}

void ModelN::id(int i, int j, int value) {
    if (i == j)
        mdl1[i]->id(value);
    else
        pair_ids_[pair(i, j)] = value;
}

char const* ModelN::comment(int i, int j) const {
    return i == j ? mdl1[i]->comment() : pair_comments_[pair(i, j)].text;
}

void ModelN::comment(int i, int j, char const* text) {
    if (!text) text = "";
    if (i == j)
        mdl1[i]->comment(text);
    else
        corvane::copy_text(pair_comments_[pair(i, j)].text, th_commlength, text);
}

double ModelN::param(int k, int i, int j) const {
    return i == j ? mdl1[i]->param(k) : *const_cast<ModelN*>(this)->ppar(k, i, j);
}

void ModelN::param(int k, int i, int j, double value) {
    if (i == j)
        mdl1[i]->param(k, value);
    else
        *ppar(k, i, j) = value;
}

namespace {
constexpr char root[] = "./CorvaneS/parameters";

/// Reads what a mixing theory keeps of the components of a pair.
void read_theory(ModelN& model, corvane::TheoryParameters& own, int a, int b, char const* equation,
                 char const* theory) {
    for (int k : {a, b}) {
        Model1& component = *model.mdl1[k];
        corvane::check_name(component.name());
        const std::string path = corvane::path_of("%s/%s/%s/%s;%d", root, equation, theory,
                                                  component.name(), model.id(a, b));
        if (!corvane::has_data_file(corvane::reading_path(path)))
            throw corvane::FileError(th_cannot_open, path,
                                     std::string(theory) + " has no parameters of " +
                                         component.name());
        const corvane::File file = corvane::open_file(path);
        FILE* f = file.get();
        const Identity before(component);
        try {
            corvane::reading(path, f, [&] {
                adopt(component, f);
                char text[th_commlength] = {};
                static_cast<void>(std::fscanf(f, "%*s"));
                corvane::read_text(f, text, th_commlength, kCommentRead);
                own.theory_in(f, k);
                model.comment(a, b, text);
            });
        } catch (...) {
            before.restore(component);
            throw;
        }
    }
    own.check_pair(a, b);
}

/// Reads the file of a pair, in either order of its names, or those that its theory has of the two
/// components; false if there is none.
bool read_pair(ModelN& model, int a, int b, char const* equation, char const* theory) {
    if (auto* own = dynamic_cast<corvane::TheoryParameters*>(&model)) {
        read_theory(model, *own, a, b, equation, theory);
        return true;
    }
    Model1 *first = model.mdl1[a], *second = model.mdl1[b];
    corvane::File file;
    std::string path;
    const auto home = [&](Model1 const& one, Model1 const& other) {
        try {
            return corvane::reading_home(
                pair_path(one, other, model.id(a, b), equation, theory, root));
        } catch (ThException const&) {
            return 0;  // the loop finds out
        }
    };
    if (home(*second, *first) < home(*first, *second)) std::swap(first, second);
    for (int attempt = 0; attempt < 2 && !file; ++attempt) {
        if (attempt == 1) std::swap(first, second);
        try {
            path = pair_path(*first, *second, model.id(a, b), equation, theory, root);
            file = corvane::open_file(path);
        } catch (ThException const&) {
            // the other order of the names, or no such pair
        }
    }
    if (!file) return false;
    FILE* f = file.get();
    const Identity before[] = {*first, *second};
    const int id_before = model.id(a, b);
    const std::string comment_before = model.comment(a, b);
    try {
        corvane::reading(path, f, [&] {
            adopt(*first, f);
            adopt(*second, f);
            int number = model.id(a, b);
            char text[th_commlength] = {};
            static_cast<void>(std::fscanf(f, "%*s\t%9d%*s", &number));
            corvane::read_text(f, text, th_commlength, kCommentRead);
            model.id(a, b, number);
            model.comment(a, b, text);
            model.par_in(f, a, b);  // also for a file found as b+a (intended): it says itself who is who
        });
    } catch (...) {  // the pair stays as it was
        before[0].restore(*first);
        before[1].restore(*second);
        model.id(a, b, id_before);
        model.comment(a, b, comment_before.c_str());
        throw;
    }
    return true;
}

void load_component(Model1& component, char const* equation) {
    try {
        component.load(equation);
    } catch (...) {  // intended: whatever it was becomes code 1
        std::fprintf(stderr, "could not load parameters for %s\n", component.name());
        try {
            throw;
        } catch (corvane::FileError& e) {
            e.number = th_cannot_open;
            throw;
        } catch (...) {
            throw ThException(th_cannot_open);
        }
    }
}
}  // namespace

bool ModelN::load_pair(int a, int b, char const* equation, char const* theory) {
    return read_pair(*this, a, b, equation, theory);
}

void ModelN::load_components(char const* equation) {
    for (int k = 0; k < mdl1.size(); ++k) load_component(*mdl1[k], equation);
}

void ModelN::load(char const* equation, char const* theory) {
    if (!equation || !theory) throw ThException(th_cannot_open);
    const corvane::CLocale c_numbers;
    refuse_other(*this, equation, theory);
    for (int a = 0; a < mdl1.size(); ++a)
        for (int b = a + 1; b < mdl1.size(); ++b)
            if (!load_pair(a, b, equation, theory))
                throw corvane::FileError(
                    th_cannot_open, std::string("./CorvaneS/parameters/") + equation + '/' + theory,
                    std::string("no file of the pair ") + mdl1[a]->name() + " + " +
                        mdl1[b]->name() + ", set " + std::to_string(id(a, b)));
    load_components(equation);
}

namespace corvane {

std::vector<std::pair<int, int>> load_estimating(ModelN& model, char const* eos, char const* mth) {
    std::vector<std::pair<int, int>> none;
    return load_estimating(model, eos, mth,
                           std::vector<ComponentPlan>(static_cast<unsigned>(model.mdl1.size())), none);
}

std::vector<std::pair<int, int>> load_estimating(ModelN& model, char const* eos, char const* mth,
                                                 std::vector<ComponentPlan> const& plans,
                                                 std::vector<std::pair<int, int>>& other_sets) {
    if (!eos || !mth) throw ThException(th_cannot_open);
    const CLocale c_numbers;
    refuse_other(model, eos, mth);
    const auto plan = [&](int k) { return plans[static_cast<unsigned>(k)]; };
    std::vector<std::pair<int, int>> estimated;
    for (int a = 0; a < model.mdl1.size(); ++a)
        for (int b = a + 1; b < model.mdl1.size(); ++b) {
            for (int k : {a, b})
                if (plan(k).set > 0) model.id(k, k, -1);  // takes any
            bool other = false;
            if (!read_pair(model, a, b, eos, mth)) estimated.emplace_back(a, b);
            for (int k : {a, b})
                if (const int set = plan(k).set; set > 0) {
                    other = other || (model.id(k, k) != -1 && model.id(k, k) != set);
                    model.id(k, k, set);
                }
            if (other) other_sets.emplace_back(a, b);
        }
    for (int k = 0; k < model.mdl1.size(); ++k) {
        if (model.id(k, k) == -1) model.id(k, k, 1);  // no pair file has named it
        if (!plan(k).ready) load_component(*model.mdl1[k], eos);
    }
    return estimated;
}

}  // namespace corvane

void ModelN::store2(char const* equation, char const* theory) const {
    if (!equation || !theory || mdl1.size() < 2) throw ThException(th_cannot_open);
    const corvane::CLocale c_numbers;
    for (int k = 0; k < 2; ++k) corvane::check_storable(mdl1[k]->name());
    corvane::check_storable(comment(0, 1), kCommentRead);
    // intended: a tree of its own, and the first pair alone
    corvane::NewFile file(pair_path(*mdl1[0], *mdl1[1], id(0, 1), equation, theory,
                                    "./CorvaneS/models/parameters"));
    FILE* f = file.stream();
    for (int k = 0; k < 2; ++k)
        std::fprintf(f, "name%d:\t%s\nid%d:\t%d\n", k + 1, mdl1[k]->name(), k + 1, mdl1[k]->id());
    std::fprintf(f, "id:\t%d\ntext:\t%s\n", id(0, 1), comment(0, 1));
    const long section = std::ftell(f);
    par_out(f, 0, 1);
    file.commit(section);
}

void ModelN::intro(char const* title, int flags) const {
    const corvane::CLocale c_numbers;
    const auto text = [](char const* s) { return s ? s : ""; };
    for (int k = 0; k < 75; ++k) std::putchar('=');
    std::printf("\n%s\n\nequation of state: %s\nmixing theory:     %s\n", text(title), text(eos),
                text(mth));
    const int n = mdl1.size();
    for (int k = 0; k < n; ++k) {
        Model1 const& component = *mdl1[k];
        std::printf("\ncomponent %d:  %s\n", k + 1, component.name());
        std::printf("parameter set: %d {%s}\n\n", component.id(), component.comment());
        if (flags & 1) {
            component.par_out(stdout);
            std::printf("\n");
        }
        if (flags & 2) component.ideal.info();
        if (flags & 4) component.solid.info();
        for (int m = k + 1; m < n; ++m) {  // intended: between the components
            std::printf("\nbinary data %d+%d:  %s + %s\n", k + 1, m + 1, component.name(),
                        mdl1[m]->name());
            std::printf("parameter set: %d {%s}\n\n", id(k, m), comment(k, m));
            if (flags & 1) par_out(stdout, k, m);
        }
    }
    std::fflush(stdout);
}

void ModelN::show2(char const* title, Vector<double> const& v) const {
    const corvane::CLocale c_numbers;
    std::printf("\n%s\n\n", title ? title : "");
    for (int k = 1; k < v.size(); ++k) std::printf(" %7.4f", v[k]);  // intended: not the first
    std::printf("\n");
    if (mdl1.size() > 1) par_out(stdout, 0, 1);
    std::printf("\n");
}
