// A model from its plug-in and the text of a parameter section, without files of the data tree.
#pragma once

#include <corvane/core/files.h>
#include <corvane/pure/attach.h>
#include <corvane/pure/model1.h>

#include <memory>
#include <string>

#include <stdio.h>

using Plugin = std::unique_ptr<Model1, corvane::Detach>;

inline corvane::File text_file(std::string const& text) {
    corvane::File file(std::tmpfile());
    std::fputs(text.c_str(), file.get());
    std::rewind(file.get());
    return file;
}

inline Plugin model_from(char const* eos, std::string const& section) {
    Plugin model(attach1(eos));
    model->par_in(text_file(section).get(), 1);
    return model;
}

inline std::string section_of(Model1 const& model) {
    corvane::File file(std::tmpfile());
    model.par_out(file.get());
    std::string text(static_cast<std::size_t>(std::ftell(file.get())), '\0');
    std::rewind(file.get());
    text.resize(std::fread(text.data(), 1, text.size(), file.get()));
    return text;
}
