// Completion of commands, options, their values, substances and models in bash and zsh.
#include <tools/corvane/manual.h>
#include <tools/corvane/text/text.h>

#include <fmt/format.h>

#include <set>

namespace cli {
namespace {
/// 'it'\''s': one word for a shell.
std::string in_quotes(std::string const& text) {
    std::string result = "'";
    for (char c : text) result += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return result + "'";
}

/// Names of files are completed where the type of a value says so.
bool is_path(OptionText const& option) {
    return option.type == "FILE" || option.type == "DIRECTORY" || option.type == "LIST";
}

std::string joined(std::vector<std::string> const& words, char const* between) {
    std::string text;
    for (std::string const& word : words) text += (text.empty() ? "" : between) + word;
    return text;
}

// Words come a line each, since units have blanks in them. `names` has substances and models, asked
// for once in a shell.
constexpr char kBashBegin[] = R"sh(# Completion of corvane in bash, written by corvane --generate.
_corvane_names() {
    [[ -n ${_corvane_known-} ]] || _corvane_known=$("$1" list --csv 2>/dev/null | sed -nE '
        s/^# equations: //; t equations
        s/^# mixture models: //; t models
        /^#|^substance,/d; s/,.*//p; d
        :equations
        s/ \([^)]*\)//g
        :models
        s/, /\n/g; p')
    printf '%s\n' "$_corvane_known"
}

_corvane() {
    local cur=${COMP_WORDS[COMP_CWORD]} words= paths= word
    local previous=${COMP_WORDS[COMP_CWORD - 1]}
    COMPREPLY=()
    [[ $previous == '=' ]] && return
    if ((COMP_CWORD == 1)); then
        words=@COMMANDS@
    else
        case "${COMP_WORDS[1]} $previous" in
)sh";
constexpr char kBashEnd[] = R"sh(        esac
    fi
    if [[ -n $paths ]]; then
        mapfile -t COMPREPLY < <(compgen -f -- "$cur")
        compopt -o filenames 2>/dev/null
        return
    fi
    while IFS= read -r word; do
        [[ -n $word && $word == "$cur"* ]] && COMPREPLY+=("$(printf '%q' "$word")")
    done <<<"$words"
}
complete -F _corvane corvane
)sh";
}  // namespace

std::string bash_completion(std::vector<CommandText> const& all) {
    std::vector<std::string> commands;
    for (std::size_t i = 1; i < all.size(); ++i) commands.push_back(all[i].name);
    for (OptionText const& option : all.front().options) commands.push_back(option.names.back());
    std::string text = kBashBegin;
    const std::string mark = "@COMMANDS@";
    text.replace(text.find(mark), mark.size(), in_quotes(joined(commands, "\n")));
    std::string options;
    for (std::size_t i = 1; i < all.size(); ++i) {
        std::vector<std::string> names;
        std::string none;  // options whose value nobody can guess
        bool asks = false;
        for (OptionText const& option : all[i].options) {
            if (option.positional) {
                asks = true;
                continue;
            }
            names.push_back(option.names.back());
            const std::string at = in_quotes(all[i].name + " " + option.names.back());
            if (is_path(option))
                text += fmt::format("            {}) paths=1 ;;\n", at);
            else if (!option.one_of.empty())
                text += fmt::format("            {}) words={} ;;\n", at,
                                    in_quotes(joined(option.one_of, "\n")));
            else if (!option.type.empty())
                none += (none.empty() ? "" : "|") + at;
        }
        if (!none.empty()) text += fmt::format("            {}) ;;\n", none);
        options += fmt::format("            {}\\ *)\n                words={}\n", all[i].name,
                               in_quotes(joined(names, "\n")));
        if (asks)
            options += "                [[ $cur == -* ]] || words=$(_corvane_names \"${COMP_WORDS[0]}\")\n";
        options += "                ;;\n";
    }
    return text + options + kBashEnd;
}

namespace {
/// Text in the description of an option of _arguments.
std::string described(std::string const& text) {
    std::string result;
    for (char c : text) {
        if (c == '[' || c == ']' || c == ':' || c == '\\') result += '\\';
        result += c;
    }
    return result;
}

/// A word in a list of values.
std::string listed(std::string const& word) {
    std::string result;
    for (char c : word) {
        if (c == ' ' || c == '(' || c == ')' || c == ':' || c == '\\') result += '\\';
        result += c;
    }
    return result;
}

std::string zsh_option(OptionText const& option) {
    std::string action;
    if (option.positional) return in_quotes("*:" + described(option.names.front()) + ":_corvane_names");
    if (!option.type.empty()) {
        std::vector<std::string> words;
        for (std::string const& word : option.one_of) words.push_back(listed(word));
        action = ":" + described(option.type) + ":";
        if (!words.empty())
            action += "(" + joined(words, " ") + ")";
        else if (is_path(option))
            action += option.type == "DIRECTORY" ? "_files -/" : "_files";
    }
    return in_quotes(option.names.back() + "[" + described(option.text) + "]" + action);
}

constexpr char kZshBegin[] = R"sh(#compdef corvane
# Completion of corvane in zsh, written by corvane --generate.
_corvane_names() {
    local -a names
    names=(${(f)"$(corvane list --csv 2>/dev/null | sed -nE '
        s/^# equations: //; t equations
        s/^# mixture models: //; t models
        /^#|^substance,/d; s/,.*//p; d
        :equations
        s/ \([^)]*\)//g
        :models
        s/, /\n/g; p')"})
    compadd -a names
}

_corvane() {
    local -a commands
    if ((CURRENT == 2)); then
        commands=(
)sh";
}  // namespace

std::string zsh_completion(std::vector<CommandText> const& all) {
    std::string text = kZshBegin, cases;
    for (std::size_t i = 1; i < all.size(); ++i) {
        CommandText const& command = all[i];
        text += fmt::format("            {}\n", in_quotes(command.name + ":" + described(command.text)));
        cases += fmt::format("        {})\n            _arguments", command.name);
        bool asked = false;
        for (OptionText const& option : command.options) {
            if (option.positional && asked) continue;  // one rule for all words
            asked = asked || option.positional;
            cases += " \\\n                " + zsh_option(option);
        }
        cases += "\n            ;;\n";
    }
    return text + R"sh(        )
        _describe command commands
        return
    fi
    local command=$words[2]
    shift words
    ((--CURRENT))
    case $command in
)sh" + cases + R"sh(    esac
}
_corvane "$@"
)sh";
}

}  // namespace cli
