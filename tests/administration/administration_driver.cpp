// Opens the profile administration of a built library and does to its dialogs what standard input says:
//
//     administration_driver LIBRARY
//
// A command is one line, its words set apart by tabs, and is answered by one line; one that cannot be carried out by
// "error: " and why. Text is UTF-8.
//
//     open MODULE PROFILE   DisplayAdminProfiles; MODULE, whose resources are shown: library, driver or none
//     end                   waits for its return: result, last result and ProfileLock
//     kind, caption, message, owner, items ID, enabled ID             of the dialog shown
//     press ID, type ID TEXT, choose ID ITEM, location PATH, close, key CODE
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <stdexcept>
#include <vector>

#include "administration_call.h"
#include "dialog_robot.h"

namespace {

std::vector<std::string> Split(const std::string& line) {
    std::vector<std::string> words{""};
    for (const char c : line)
        if (c == '\t')
            words.emplace_back();
        else if (c != '\r')
            words.back() += c;
    words.resize(3);
    return words;
}

std::string YesOrNo(bool answer) {
    return answer ? "yes" : "no";
}

class Driver {
  public:
    explicit Driver(HMODULE library) : library_(library) {}

    bool IsOpen() const { return call_ != nullptr; }
    std::string Obey(const std::vector<std::string>& words) {
        const std::string& command = words[0];
        if (command == "open") {
            call_ = std::make_unique<AdministrationCall>(library_, ModuleOf(words[1]), words[2]);
            return "opened";
        }
        if (!call_) throw std::runtime_error("nothing is open");
        if (command == "end") {
            const std::string result = call_->Finish();
            call_.reset();
            return result;
        }
        return Work(DialogRobot(call_->ThreadId()), command, words);
    }

  private:
    HMODULE ModuleOf(const std::string& name) const {
        if (name == "library") return library_;
        if (name == "driver") return GetModuleHandleW(nullptr);
        if (name == "none") return nullptr;
        throw std::runtime_error("no module " + name);
    }

    static std::string Work(const DialogRobot& robot, const std::string& command,
                            const std::vector<std::string>& words) {
        const int id = std::atoi(words[1].c_str());
        if (command == "kind") return robot.Kind();
        if (command == "caption") return robot.Caption();
        if (command == "message") return robot.Message();
        if (command == "owner") return YesOrNo(robot.IsOwnerEnabled());
        if (command == "items") return robot.Items(id);
        if (command == "enabled") return YesOrNo(robot.IsEnabled(id));
        if (command == "location") return robot.ChooseLocation(words[1]);
        if (command == "press")
            robot.Press(id);
        else if (command == "type")
            robot.Type(id, words[2]);
        else if (command == "choose")
            robot.Choose(id, words[2]);
        else if (command == "close")
            robot.CloseByMenu();
        else if (command == "key")
            robot.PressKey(static_cast<WORD>(id));
        else
            throw std::runtime_error("no command " + command);
        return "done";
    }

    HMODULE library_;
    std::unique_ptr<AdministrationCall> call_;
};

}  // namespace

int main(int argumentCount, char** arguments) {
    if (argumentCount != 2) {
        std::fputs("usage: administration_driver LIBRARY\n", stderr);
        return 2;
    }
    const HMODULE library = LoadLibraryA(arguments[1]);
    if (library == nullptr) {
        std::fprintf(stderr, "administration_driver: %s cannot be loaded: error %lu\n", arguments[1], GetLastError());
        return 1;
    }
    Driver driver(library);
    for (std::string line; std::getline(std::cin, line);) {
        std::string answer;
        try {
            answer = driver.Obey(Split(line));
        } catch (const std::exception& error) {
            answer = std::string("error: ") + error.what();
        }
        for (char& c : answer)
            if (c == '\n' || c == '\r') c = ' ';
        std::cout << answer << std::endl;
    }
    // A dialog that is still open keeps its thread: only the end of the process ends it.
    ExitProcess(driver.IsOpen() ? 1 : 0);
}
