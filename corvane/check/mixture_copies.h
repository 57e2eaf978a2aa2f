// Mixtures that are loaded anew from the components and pairs of one that is loaded.
#pragma once

#include <corvane/mixture/modeln.h>
#include <corvane/pure/attach.h>

#include <memory>
#include <vector>

namespace corvane::inline detail {

using Mixed = std::unique_ptr<ModelN, Detach>;

enum class Pairs {
    by_section,  ///< which says who is who where a pair is not symmetric
    by_value
};

/// Of components of this one, in any order, each as often as it is named, with the values that its
/// parameters have now.
Mixed made_of(ModelN const& mixture, std::vector<int> const& which,
              Pairs pairs = Pairs::by_section);

/// The components in reverse order, with the pairs as files have them; null where there are none.
Mixed reversed(ModelN const& mixture);

}  // namespace corvane::inline detail
