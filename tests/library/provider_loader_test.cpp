// Where the library finds its provider, what it does with an incomplete one, and that it looks nowhere else. Every test
// works on copies of the library of its own, so that each starts as a library that was never used.
#include <algorithm>
#include <optional>

#include "support/library_test.h"

namespace {

namespace fs = std::filesystem;

constexpr const char* libraryName = "QDXL7RC.DLL";
constexpr const char* providerName = "QDXL7RA.DLL";

#ifdef _WIN32
constexpr const char* longPathPrefix = "\\\\?\\";
#else
constexpr const char* longPathPrefix = "";
#endif

// Providers that lie where a bare file name would be looked for: in the current folder, in the folders of the search
// path, and in the system's folder.
class Decoys {
  public:
    explicit Decoys(const fs::path& folder) : folderBefore_(fs::current_path()) {
        Put(folder / "current");
        Put(folder / "searched");
        fs::current_path(folder / "current");
        const char* const path = std::getenv(searchPath);
        pathBefore_ = path != nullptr ? path : "";
        SetVariable(searchPath, (folder / "searched").string() + separator + pathBefore_);
#ifdef _WIN32
        char system[MAX_PATH];
        GetSystemDirectoryA(system, sizeof system);
        Put(system);
#endif
    }
    ~Decoys() {
        fs::current_path(folderBefore_);
        SetVariable(searchPath, pathBefore_);
        for (const fs::path& decoy : decoys_) fs::remove(decoy);
    }

  private:
#ifdef _WIN32
    static constexpr const char* searchPath = "PATH";
    static constexpr char separator = ';';
    static void SetVariable(const char* name, const std::string& value) {
        SetEnvironmentVariableA(name, value.c_str());
    }
#else
    static constexpr const char* searchPath = "LD_LIBRARY_PATH";
    static constexpr char separator = ':';
    static void SetVariable(const char* name, const std::string& value) {
        setenv(name, value.c_str(), 1);
    }
#endif
    void Put(const fs::path& folder) {
        fs::create_directories(folder);
        decoys_.push_back(folder / providerName);
        fs::copy_file(ScriptedFolder() / providerName, decoys_.back(), fs::copy_options::overwrite_existing);
    }

    std::vector<fs::path> decoys_;
    const fs::path folderBefore_;
    std::string pathBefore_;
};

class ProviderLoaderTest : public testing::Test {
  protected:
    ProviderLoaderTest() {
        script_.Reset();
        fs::create_directories(folder_);
    }
    ~ProviderLoaderTest() override {
        EXPECT_EQ(script_.Imbalance(), "");
        script_.Reset();
        // A later run in another code page may not be able to: it need not see every name.
        fs::remove_all(folder_);
    }

    void Copy(const char* file, const fs::path& to) const {
        fs::create_directories(to.parent_path());
        fs::remove(to);
        fs::copy_file(ScriptedFolder() / file, to);
    }

    // Opens and closes one session through the library at the path.
    bool Opens(const fs::path& path) {
        const LibraryUnderTest library(path);
        EXPECT_NE(library.Handle(), nullptr) << path << " cannot be loaded";
        if (library.Handle() == nullptr) return false;
        EXPECT_EQ(library.GetLastVOKError(nullptr), 0);
        SessionHandle* const session = library.OpenAddressBook(nullptr, "p", 0, nullptr, 0, nullptr);
        EXPECT_EQ(library.GetLastVOKError(nullptr), session == nullptr ? E_FAIL : S_OK);
        EXPECT_EQ(library.CloseAddressBook(session), 1);
        return session != nullptr;
    }
    // The path of the provider that an open loads, or nothing if it fails.
    std::optional<fs::path> ProviderOf(const fs::path& path) {
        script_.loaded.clear();
        if (!Opens(path)) {
            EXPECT_TRUE(script_.loaded.empty()) << "loaded " << script_.loaded[0];
            return std::nullopt;
        }
        return script_.loaded.size() == 1 ? std::optional(fs::path(script_.loaded[0])) : std::nullopt;
    }

    Script& script_ = TheScript();
    const fs::path folder_ = ScratchFolder() / testing::UnitTest::GetInstance()->current_test_info()->name();
};

TEST_F(ProviderLoaderTest, FindsTheProviderByTheLibrarysOwnPath) {
    struct {
        const char* library;
        const char* provider;  // relative to the same folder, or null: the open fails
    } const cases[] = {
        {"plain/QDXL7RC.DLL", "plain/QDXL7RA.DLL"},
        {"lower/qdxl7rc.dll", "lower/QDXL7RA.DLL"},
        {"QDXL7RC.DLL/QDXL7RC.DLL", "QDXL7RC.DLL/QDXL7RA.DLL"},
        {"prefix/XQDXL7RC.DLL", "prefix/XQDXL7RA.DLL"},
        {"other/Library.dll", "other/Library.dllQDXL7RA.DLL"},
        {"twice/QDXL7RC.DLL.QDXL7RC.DLL", "twice/QDXL7RC.DLL.QDXL7RA.DLL"},
    };
    for (const auto& each : cases) {
        SCOPED_TRACE(each.library);
        // A provider under the usual name lies there in any case.
        Copy(libraryName, folder_ / each.library);
        Copy(providerName, (folder_ / each.library).parent_path() / providerName);
        Copy(providerName, folder_ / each.provider);
        const std::optional<fs::path> loaded = ProviderOf(folder_ / each.library);
        ASSERT_TRUE(loaded.has_value());
        EXPECT_TRUE(fs::equivalent(*loaded, folder_ / each.provider)) << *loaded;
    }
}

TEST_F(ProviderLoaderTest, LooksNowhereElse) {
    Copy(libraryName, folder_ / "missing" / libraryName);
    Copy(libraryName, folder_ / "renamed" / "Library.dll");
    Copy(providerName, folder_ / "renamed" / providerName);
    Copy(libraryName, folder_ / "broken" / libraryName);
    Copy("QDXL7RC.DLL", folder_ / "broken" / "damaged");
    fs::resize_file(folder_ / "broken" / "damaged", 300);
    fs::rename(folder_ / "broken" / "damaged", folder_ / "broken" / providerName);
    const Decoys decoys(folder_ / "decoys");
    EXPECT_FALSE(Opens(folder_ / "missing" / libraryName));
    EXPECT_FALSE(Opens(folder_ / "renamed" / "Library.dll"));
    EXPECT_FALSE(Opens(folder_ / "broken" / libraryName));
    EXPECT_TRUE(script_.loaded.empty());
    // Nor is it one of them where the right one is there.
    Copy(libraryName, folder_ / "whole" / libraryName);
    Copy(providerName, folder_ / "whole" / providerName);
    const std::optional<fs::path> loaded = ProviderOf(folder_ / "whole" / libraryName);
    ASSERT_TRUE(loaded.has_value());
    EXPECT_TRUE(fs::equivalent(*loaded, folder_ / "whole" / providerName)) << *loaded;
}

// A folder whose name has characters beside ASCII. Where the code page lacks one, the system gives the library a path
// with the nearest character instead, or with '?': the provider there is somebody else's.
TEST_F(ProviderLoaderTest, ReadsFolderNamesOfAnyCharacters) {
    struct {
        std::u8string name;
        std::u8string nearest;  // empty: there is none
    } const cases[] = {{u8"B\u00FCro", u8""},
                       {u8"\u8868", u8""},
                       {u8"\uFF21", u8"A"},
                       {u8"A\u0304", u8"A"},
                       {u8"\u0660\U0001F4E0", u8""}};
    unsigned made = 0;
    unsigned opened = 0;
    for (const auto& each : cases) {
        SCOPED_TRACE(&each - cases);
        const fs::path own = folder_ / fs::path(each.name);
        std::error_code impossible;
        fs::create_directories(own, impossible);
        if (impossible) continue;
        ++made;
        Copy(libraryName, own / libraryName);
        Copy(providerName, own / providerName);
        if (!each.nearest.empty()) Copy(providerName, folder_ / fs::path(each.nearest) / providerName);
        script_.loaded.clear();
        if (!Opens(own / libraryName)) {
            EXPECT_TRUE(script_.loaded.empty()) << "loaded " << script_.loaded[0];
            continue;
        }
        ++opened;
        ASSERT_EQ(script_.loaded.size(), 1u);
        const std::string nearest = (folder_ / fs::path(each.nearest) / providerName).string();
        EXPECT_FALSE(!each.nearest.empty() && script_.loaded[0].ends_with(nearest)) << script_.loaded[0];
    }
    if (made == 0) GTEST_SKIP() << "files have no such names here";
    EXPECT_GT(opened, 0u);
}

// A path that is longer than the library's buffer is not taken for the path of the folder where the buffer ends.
TEST_F(ProviderLoaderTest, APathLongerThanTheBufferIsNoPath) {
    fs::path parent = fs::absolute(folder_);
    while (parent.string().size() < 300) parent /= std::string(100, 'l');
    const fs::path library = parent / libraryName;
    const std::string cut = library.string().substr(0, 259) + providerName;
    const fs::path decoy = cut;
    const std::string prefix = longPathPrefix;
    Copy(libraryName, prefix + library.string());
    Copy(providerName, prefix + (parent / providerName).string());
    Copy(providerName, prefix + decoy.string());
    EXPECT_FALSE(Opens(prefix + library.string()));
    // What removes the scratch folder does not know such paths.
    for (const fs::path& file : {library, parent / providerName, decoy})
        EXPECT_TRUE(fs::remove(prefix + file.string()));
    for (; parent != fs::absolute(folder_); parent = parent.parent_path())
        EXPECT_TRUE(fs::remove(prefix + parent.string()));
}

// The longest path that GetModuleFileNameA gives whole has 259 bytes; with the provider's name appended it is longer
// than MAX_PATH. Windows itself may refuse to load that, but then nothing else is loaded in its place.
TEST_F(ProviderLoaderTest, ManagesTheLongestPath) {
    for (const std::string name : {libraryName, "Library.dll"}) {
        const std::string begin = fs::absolute(folder_).string();
        ASSERT_LT(begin.size() + name.size() + 12, 259u) << "this folder's own path is too long for the test";
        fs::path parent = begin;
        size_t missing = 259 - begin.size() - 1 - name.size();
        while (missing > 0) {
            const size_t part = std::min<size_t>(missing - 1, missing > 101 && missing < 104 ? 50 : 100);
            parent /= std::string(part, 'l');
            missing -= part + 1;
        }
        const fs::path library = parent / name;
        const fs::path expected =
            name == libraryName ? parent / providerName : fs::path(library.string() + providerName);
        ASSERT_EQ(library.string().size(), 259u);
        Copy(libraryName, library);
        Copy(providerName, expected);
        const std::optional<fs::path> loaded = ProviderOf(library);
#ifdef _WIN32
        if (name != libraryName && !loaded) continue;
#endif
        ASSERT_TRUE(loaded.has_value()) << library;
        EXPECT_EQ(loaded->filename(), expected.filename());
    }
}

TEST_F(ProviderLoaderTest, ManagesWithAnIncompleteProvider) {
    struct {
        const char* provider;
        bool opens, creates;
        int books;
    } const cases[] = {
        {"without_open.DLL", false, true, 0},
        {"without_admin_profiles.DLL", true, false, 1},
        {"without_free_prows.DLL", true, true, 0},
        {"without_resource_handle.DLL", true, true, 1},
    };
    for (const auto& each : cases) {
        SCOPED_TRACE(each.provider);
        script_.Reset();
        script_.resourceResult = E_FAIL;  // only a provider that can be asked refuses
        if (std::string(each.provider) != "without_resource_handle.DLL") script_.resourceResult = S_OK;
        AddContainer("", "b", "Book");
        const fs::path own = folder_ / each.provider;
        Copy(libraryName, own / libraryName);
        Copy(each.provider, own / providerName);
        const LibraryUnderTest library(own / libraryName);
        SessionHandle* const session = library.OpenAddressBook(nullptr, "p", 0, nullptr, 0, nullptr);
        EXPECT_EQ(session != nullptr, each.opens);
        EXPECT_EQ(library.GetLastVOKError(nullptr), each.opens ? S_OK : E_FAIL);
        if (session != nullptr) {
            uint32_t count = 0;
            EXPECT_EQ(library.GetAddressBookList(session, 0, nullptr, &count, nullptr), each.books);
            EXPECT_EQ(count, static_cast<uint32_t>(each.books));
            EXPECT_EQ(library.CloseAddressBook(session), 1);
        }
        for (const bool create : {true, false}) {
            const int32_t result = create ? library.CreateProfile(0, 0, "p", 0, nullptr, nullptr)
                                          : library.DisplayAdminProfiles(0, "p", 0, 0, nullptr);
            EXPECT_EQ(result, each.creates ? 1 : 0);
            EXPECT_EQ(library.GetLastVOKError(nullptr), each.creates ? S_OK : E_FAIL);
        }
        EXPECT_EQ(script_.Imbalance(), "");
    }
}

TEST_F(ProviderLoaderTest, UnloadsTheProviderAfterTheLastClose) {
    Copy(libraryName, folder_ / libraryName);
    Copy(providerName, folder_ / providerName);
    const LibraryUnderTest library(folder_ / libraryName);
    EXPECT_TRUE(script_.loaded.empty());
    SessionHandle* const first = library.OpenAddressBook(nullptr, nullptr, 0, nullptr, 0, nullptr);
    SessionHandle* const second = library.OpenAddressBook(nullptr, nullptr, 0, nullptr, 0, nullptr);
    library.CreateProfile(0, 0, "p", 0, nullptr, nullptr);
    library.CloseAddressBook(first);
    EXPECT_EQ(script_.unloadCount, 0u);
    library.CloseAddressBook(second);
    EXPECT_EQ(script_.unloadCount, 1u);

    script_.openResult = E_FAIL;
    EXPECT_EQ(library.OpenAddressBook(nullptr, nullptr, 0, nullptr, 0, nullptr), nullptr);
    EXPECT_EQ(script_.unloadCount, 2u);
    library.CreateProfile(0, 0, "p", 0, nullptr, nullptr);
    library.DisplayAdminProfiles(0, "p", 0, 0, nullptr);
    EXPECT_EQ(script_.loaded.size(), 4u);
    EXPECT_EQ(script_.unloadCount, 4u);
}

}  // namespace
