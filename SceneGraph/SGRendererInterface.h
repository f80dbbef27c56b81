#pragma once

/// The interface between a renderer module and the libraries it is loaded into, as a number: it rises
/// whenever a module built against older headers could no longer be loaded. A macro, so that the mark below
/// is one text.
#define SG_RENDERER_INTERFACE_VERSION "1"

/// Stands before the version in a module's file.
#define SG_RENDERER_INTERFACE_TITLE "SG renderer interface version "

/// Stands once in every module, outside namespaces and with a semicolon after it: the mark from which
/// SGRendererModule reads the module's version before any of its code runs.
#define SG_RENDERER_MODULE                                                                                   \
    extern "C" [[gnu::used, gnu::visibility("default")]] char const sgRendererInterface[] =                  \
        SG_RENDERER_INTERFACE_TITLE SG_RENDERER_INTERFACE_VERSION
