#pragma once

namespace ombrelune {

struct SummedAreaTable {};

} // namespace ombrelune
