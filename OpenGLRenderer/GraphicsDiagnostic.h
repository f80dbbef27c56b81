#pragma once

/// Decides which techniques the renderer may use on this machine's card, and remembers it. Every function
/// needs the renderer's context current.
class GraphicsDiagnostic {
public:
    /// Whether there is no verdict, or none that still fits the card: another card or driver, a technique of
    /// the card that it says nothing of, or one that it grants and the card lacks.
    [[nodiscard]] static bool isDiagnosticNeeded();

    /// Finds out what the renderer may use, has it draw so, and stores the verdict. Draws dozens of frames
    /// into the drawable, which must be at least 512 by 512 pixels, and takes about a second.
    static void runDiagnostic();

    /// Has the renderer draw as the stored verdict says, whether or not that fits the card.
    static void readDiagnosticResults();
};
