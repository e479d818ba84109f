// SPDX-License-Identifier: MIT
// A program outside the tree that uses the installed package: find_package(Framix) must work.
#include <cstdio>

#include "flow/FXChangeFormat.h"
#include "framework/FXGraph.h"

int main()
{
    framix::TFXGraph graph;
    auto* change = new framix::TFXChangeFormat(&graph);
    change->SetPropertyByPath("Format", "vfGray8");
    std::puts(change->GetPropertyByPath("Format").c_str());
    return change->GetFormat() == framix::vfGray8 ? 0 : 1;
}
