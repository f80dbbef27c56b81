#pragma once

/// Whether OpenGL's version passes for `major`.`minor` or later. The version is read once per process.
///
/// Passes when the major number is greater, or when the minor number alone reaches `minor`; the majors need
/// not be equal for that.
///
/// Throws boost::bad_lexical_cast where the version string has a "." but no number before it.
[[nodiscard]] bool checkGLVersion(int major, int minor);
