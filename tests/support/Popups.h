// Answers the boxes and dialogs that the program opens in the test's own process.
#pragma once

#include <windows.h>

#include <deque>
#include <functional>
#include <string>

namespace support {

/// A script: each step waits for the next dialog of this thread whose title and labels contain its text, and
/// works it. It fails the test when another one comes or one without an owner, which is closed then, and when
/// a step is left over. One at a time.
class Popups {
  public:
    using Work = std::function<void(HWND dialog)>;

    Popups();
    ~Popups();
    Popups(const Popups&) = delete;
    Popups& operator=(const Popups&) = delete;

    /// `work` must not wait for the dialog's end.
    Popups& Expect(std::wstring text, Work work);
    /// Presses the button of that id.
    Popups& Expect(std::wstring text, int button);
    /// For a prompt of one line.
    Popups& ExpectPrompt(std::wstring title, std::wstring text, int button = IDOK);
    /// For a file dialog: enters a path and confirms it; an empty one leaves the dialog. `before` works the
    /// dialog first.
    Popups& ExpectFile(std::wstring title, std::wstring path, Work before = {});
    /// From now on `work` gets each dialog, whatever its text, as often as it is found in front.
    void AnswerAll(Work work) { m_all = std::move(work); }
    bool m_ownersMatter = true;
    /// Fails the test when a step is left, and forgets it.
    void ExpectNoMore();

  private:
    struct Step {
        std::wstring text;
        Work work;
    };
    void Look();

    std::deque<Step> m_steps;
    Work m_all;
    HWND m_worked = nullptr;  // not worked again before another one was in front of it
    UINT_PTR m_timer;
};

/// The control of that id in a file dialog, also in the template added to it; null when there is none.
HWND InFileDialog(HWND dialog, int id);
/// The field for the file's name in a file dialog: not every system has the same one where a program takes
/// part.
HWND FileNameField(HWND dialog);

}  // namespace support
