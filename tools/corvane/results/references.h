// Words on the pure component that an activity coefficient refers to.
#pragma once

#include <tools/corvane/input/open_mixture.h>

#include <corvane/state/excess.h>

#include <string>

namespace cli {

/// What is to be known of component i as reference at T: that it is no liquid where one was asked
/// for, or not stable; "" otherwise.
std::string reference_note(MixtureFluid const& mixture, int i, double T,
                           corvane::PureReference const& pure, corvane::Root root);

}  // namespace cli
