// Whether a data file is there and has the form that the engine reads. The engine replaces a file that is
// missing or damaged by a fallback or by zeros; before a result depends on a file it is checked here.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tarvane::vessel {

inline constexpr std::string_view APPROXIMATE_FILE = "approximate.txt", BOLT_FILE = "BOLTDATA.TXT",
                                  MODULUS_FILE = "ElastAlp07.txt", TABLE_G_FILE = "TableGData.txt",
                                  YIELD_FILE = "YIELDSTR.BIN",
                                  UCS_23_FILE = "VIII-1_Matls_By_Table.txt";

// What is wrong with a file of the data folder, "missing in FOLDER" for instance; nothing when it is sound, or
// when only its readers know its form.
std::optional<std::string> data_file_fault(std::string_view name);

// Whether a text is the name of a file whose form is known.
bool is_data_file(std::string_view name);

// "BOLTDATA.TXT is missing in the data folder FOLDER", for each of these files that is not there.
std::vector<std::string> missing_data_files();

// Throws std::runtime_error with the name of the file and its fault.
void require_data_file(std::string_view name);

// The same for many elements of one input file: each data file is read once.
class DataFilesCheck {
  public:
    // The fault of a file at the first request for it; nothing later, so that it is reported once.
    std::optional<std::string> first_fault(std::string_view name);

    // Every fault is reported once more.
    void tell_again();

    bool sound(std::string_view name);
    // is_approximate of a folder whose list of them is sound.
    bool approximate(const std::string& file, const std::string& item);

  private:
    struct Answer {
        std::optional<std::string> fault;
        bool told = false;
    };
    std::map<std::string, Answer, std::less<>> answers;
    std::map<std::pair<std::string, std::string>, bool> approximates;

    Answer& answer(std::string_view name);
};

} // namespace tarvane::vessel
