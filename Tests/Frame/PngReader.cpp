#include "Tests/Frame/PngReader.h"

#include <png.h>

#include <stdexcept>

sgview::Picture readPng(std::filesystem::path const& file)
{
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    if (png_image_begin_read_from_file(&image, file.c_str()) == 0)
        throw std::runtime_error(file.string() + ": " + image.message);
    image.format = PNG_FORMAT_RGBA;
    sgview::Picture picture({static_cast<int>(image.width), static_cast<int>(image.height)});
    if (png_image_finish_read(&image, nullptr, picture.pixels.data(), 0, nullptr) == 0)
        throw std::runtime_error(file.string() + ": " + image.message);
    return picture;
}
