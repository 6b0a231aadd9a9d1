// A folder of the test's own, removed at its end with all that is in it.
#pragma once

#include <windows.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

namespace support {

/// Empty when it can't be read.
inline std::string BytesOf(const std::filesystem::path& file) {
    std::ostringstream bytes;
    bytes << std::ifstream(file, std::ios::binary).rdbuf();
    return bytes.str();
}

class FileSandbox {
  public:
    FileSandbox() {
        std::filesystem::remove_all(m_folder);
        std::filesystem::create_directories(m_folder);
    }
    ~FileSandbox() {
        std::error_code ignored;
        std::filesystem::remove_all(m_folder, ignored);
    }
    FileSandbox(const FileSandbox&) = delete;
    FileSandbox& operator=(const FileSandbox&) = delete;

    const std::filesystem::path& Folder() const { return m_folder; }
    std::wstring Path(const std::wstring& name) const { return (m_folder / name).wstring(); }
    /// Gives the file's path.
    std::wstring Write(const std::wstring& name, const std::string& bytes) const {
        std::ofstream(m_folder / name, std::ios::binary) << bytes;
        return Path(name);
    }
    std::string Read(const std::wstring& name) const { return BytesOf(m_folder / name); }
    std::vector<std::wstring> Names() const {
        std::vector<std::wstring> names;
        for (const auto& entry : std::filesystem::directory_iterator(m_folder))
            names.push_back(entry.path().filename().wstring());
        std::ranges::sort(names);
        return names;
    }

  private:
    std::filesystem::path m_folder = std::filesystem::temp_directory_path() /
                                     (L"Plug-in Manager files " + std::to_wstring(::GetCurrentProcessId()));
};

}  // namespace support
