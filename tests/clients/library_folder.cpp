// The library finds its own folder, however it was named when it was loaded.
//   library_folder NAME FOLDER
#include "tarvane/tarvane.h"

#include <cstdio>
#include <filesystem>
#include <string>

#include <dlfcn.h>

int main(int count, char** arguments) {
    void* const library = count == 3 ? dlopen(arguments[1], RTLD_NOW) : nullptr;
    void* const found = library != nullptr ? dlsym(library, "GET_SYSTEM_PATH") : nullptr;
    if (found == nullptr) {
        std::fprintf(stderr, "library_folder: no library\n");
        return 1;
    }
    // Without settings of the user's own the data are beside the library.
    const int32_t selector = 270;
    char path[260];
    reinterpret_cast<decltype(&::GET_SYSTEM_PATH)>(found)(&selector, "none such", 9, "2024", 4,
                                                          path, sizeof path);
    std::string folder(path, sizeof path);
    folder.erase(folder.find_last_not_of(' ') + 1);
    std::printf("library_folder: %s\n", folder.c_str());
    const bool right = folder.starts_with('/') && folder.ends_with('/') &&
                       std::filesystem::equivalent(folder, arguments[2]);
    return right ? 0 : 1;
}
