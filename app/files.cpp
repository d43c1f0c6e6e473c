#include "files.h"

#include <filesystem>
#include <fstream>
#include <random>
#include <sstream>
#include <stdexcept>

namespace tarvane::app {

std::string read_whole(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream bytes;
    if (!file || std::filesystem::is_directory(path))
        throw std::runtime_error("cannot read " + path);
    if (file.peek() != std::ifstream::traits_type::eof() && !(bytes << file.rdbuf()))
        throw std::runtime_error("cannot read " + path);
    return bytes.str();
}

void write_whole(const std::string& path, std::string_view bytes) {
    namespace fs = std::filesystem;
    std::random_device random;
    const fs::path target(path);
    fs::path partial = target;
    partial += ".partial-" + std::to_string(random());
    std::error_code failure;
    {
        std::ofstream file(partial, std::ios::binary);
        file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        file.close();
        if (!file) failure = std::make_error_code(std::errc::io_error);
    }
    if (!failure) fs::rename(partial, target, failure);
    if (failure) {
        std::error_code ignored;
        fs::remove(partial, ignored);
        throw std::runtime_error("cannot write " + path);
    }
}

} // namespace tarvane::app
