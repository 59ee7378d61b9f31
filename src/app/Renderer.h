#pragma once

namespace Renderer {

/// Chooses how windows are drawn. To be called before the first window.
///
/// Without a GPU the toolkit would draw through a software OpenGL, which takes three times as long
/// to show a window and three times the memory of its own software renderer.
void choose();

} // namespace Renderer
