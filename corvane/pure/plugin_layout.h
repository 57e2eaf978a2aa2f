// What a plug-in is compiled against: the sizes and slots of the classes that it derives from.
#pragma once

#include <corvane/core/containers.h>
#include <corvane/mixture/modeln.h>
#include <corvane/pure/model1.h>

namespace corvane {

/// The layout of the classes that a plug-in shares with the library. A plug-in that includes
/// corvane/plugin/plugin.h carries it as corvane_plugin_layout; attach1 and attachN refuse another.
struct PluginLayout {
    unsigned slots = 1;  ///< counts up when virtual functions or what they mean change
    unsigned model1 = sizeof(Model1);
    unsigned modelN = sizeof(ModelN);
    unsigned vector = sizeof(Vector<double>);

    friend constexpr bool operator==(PluginLayout const&, PluginLayout const&) = default;
};

}  // namespace corvane
