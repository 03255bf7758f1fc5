#pragma once

namespace veltora {

/// TRACER: the plan of the drawing as PDF, SVG or PNG; asks for file, scale, paper and window.
void tracer();

}  // namespace veltora
