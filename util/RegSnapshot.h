// Registry keys as they are, written as the text of a .reg file.
#pragma once

#include <windows.h>

#include <string>
#include <utility>
#include <vector>

#include "BackupStep.h"
#include "RegFileText.h"

HKEY RootOf(BackupHive hive);
/// With the hive's full name.
std::wstring FullKeyPath(const BackupKey& key);

/// Takes keys one after the other, and can tell afterwards whether anything of them is gone.
class CRegSnapshot {
  public:
    /// Appends what makes the key again what it is now: a key that is not there is removed, one with values
    /// of its own named gets these, any other is removed and made anew. Gives a system error when something
    /// can't be read, or can't be written in such a file; the text is of no use then.
    DWORD Take(const BackupKey& key, std::wstring& text, const RegTextSink& sink = {});

    /// Every key and value that was there is there still, and unchanged. What has come in addition doesn't
    /// count.
    bool IsIntact() const;

  private:
    struct Seen {
        BackupKey key;
        std::vector<std::pair<std::wstring, std::size_t>> values;  // with a digest of type and data
    };
    DWORD TakeTree(const BackupKey& key, std::wstring& text, const RegTextSink& sink);

    std::vector<Seen> m_seen;
};
