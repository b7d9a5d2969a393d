// One line on the terminal that says what is being read.
#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <string>
#include <thread>

namespace command {

/// Draws on standard error, where that is a terminal, about five times a second; else it does
/// nothing. Nothing else may be written to the terminal while the line is shown.
class Progress {
public:
    /// With `is_wanted` false it does nothing either.
    Progress(const std::string& host, bool is_wanted);
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    /// From now on: "HOST: WHAT, N s". The seconds count from the construction.
    void Show(const std::string& what);
    void Hide();

    /// Takes the line off the terminal for a process that ends at once; from any thread.
    static void Erase();

private:
    void Draw();
    void Redraw();

    const std::string host_;
    const std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
    std::mutex mutex_;
    std::condition_variable changed_;
    std::string what_;  ///< empty while the line is hidden
    bool is_over_ = false;
    std::thread drawing_;
};

}  // namespace command
