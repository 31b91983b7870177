#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Shows for each house rule what it refuses and what it lets pass."""

import contextlib
import io
import os
import pathlib
import subprocess
import sys
import tempfile
import textwrap
import unittest

sys.dont_write_bytecode = True  # nothing is left behind among the sources
sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
import check_house_rules  # noqa: E402

HEAD = "// SPDX-License-Identifier: MIT\n"
HEADER = HEAD + "#pragma once\n"
ROOT_INTERFACE = """
class IRoot
{
public:
    static constexpr const char Id[] = "root";

    // Slot 1. Does the first thing.
    //   text  borrowed
    // Threads: any. Fails: never.
    virtual void First(const char* text) = 0;

    // Slot 2. Does the second thing.
    // Threads: one at a time, as far as
    // the callers agree. Fails: -1.
    virtual Result Second(int a,
                          int b)
    {
        return First("virtual"), 0;
    }

protected:
    ~IRoot() = default;
};
"""


class HouseRules(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = pathlib.Path(folder.name)

    def write(self, path, text):
        place = self.root / path
        place.parent.mkdir(parents=True, exist_ok=True)
        place.write_text(text)

    def findings(self):
        return sorted(check_house_rules.findings(self.root))

    def found_in(self, path, text):
        """The line numbers that are complained about in one file, counted from 1 behind its head."""
        head = HEADER if path.endswith(".h") else HEAD
        self.write(path, head + textwrap.dedent(text))
        return [line - head.count("\n") for found, line, _ in self.findings() if found == path]

    def documented(self, operation):
        """What is said of an operation that follows the two of IRoot."""
        self.write("Interfaces/IRoot.h", HEADER + ROOT_INTERFACE)
        text = "class INext : public tvx::IRoot\n{\n" + textwrap.dedent(operation) + "};\n"
        self.write("Interfaces/INext.h", HEADER + text)
        return [message for _, _, message in self.findings()]

    # Macros

    def test_a_macro_of_ones_own_is_refused(self):
        self.assertEqual(self.found_in("Src/A.cpp", "int a;\n#define MY_MACRO 1\n"), [2])

    def test_an_indented_macro_is_refused(self):
        self.assertEqual(self.found_in("Helpers/Results.h", "  #  define TVX_OTHER(x) x\n"), [1])

    def test_a_checking_macro_away_from_its_header_is_refused(self):
        self.assertEqual(self.found_in("Helpers/Other.h", "#define TVX_CHECK_PRECOND(x) x\n"), [1])

    def test_a_macro_with_several_homes_is_refused_in_other_files(self):
        self.assertEqual(self.found_in("Src/A.cpp", "#define HWY_TARGET_INCLUDE x\n"), [1])

    def test_the_six_macros_the_export_mark_and_those_of_tests_pass(self):
        for name, homes in check_house_rules.MACROS.items():
            for home in homes:
                self.assertEqual(self.found_in(home, f"#define {name}(x) x\n"), [])
        self.assertEqual(self.found_in("Tests/Unit/A.cpp", "#define ANYTHING\n"), [])
        self.assertEqual(self.found_in("Src/A.cpp", "// #define MY_MACRO 1\n"), [])

    # Reference counting

    def test_raw_counting_is_refused(self):
        for call in (
            "object->AddRef();",
            "object.Release();",
            "return Release();",
            "if (x && Release() == 0) {}",
            "Base::Release();",
            "(*object).AddRef ();",
            "AddRef();",
        ):
            with self.subTest(call):
                self.assertEqual(self.found_in("Src/A.cpp", f"void F()\n{{\n    {call}\n}}\n"), [3])

    def test_declaring_defining_and_naming_the_counting_operations_passes(self):
        for text in (
            "virtual std::uint32_t AddRef() = 0;",
            "std::uint32_t Release() override;",
            "std::uint32_t Class<T>::Release()\n{\n}",
            "std::atomic<int>& AddRef();",
            "auto pointer = &IObjectBase::Release;",
            '// object->AddRef();\nauto text = "Release()";',
            "lock.ReleaseAll();",
        ):
            with self.subTest(text):
                self.assertEqual(self.found_in("Host/A.cpp", text + "\n"), [])

    def test_helpers_the_holder_and_tests_may_count(self):
        for path in ("Helpers/CountedImpl.h", "Interfaces/Ref.h", "Tests/Support/Double.h"):
            self.assertEqual(self.found_in(path, "void F() { object->AddRef(); }\n"), [])

    # The operating system

    def test_asking_for_the_operating_system_is_refused(self):
        for text in ("#ifdef _WIN32", "#if defined(__linux__) && X", "#if X\n#elif __APPLE__", "#if X || \\\n    _WIN64"):
            with self.subTest(text):
                self.assertEqual(len(self.found_in("Src/A.cpp", text + "\n#endif\n")), 1)

    def test_headers_of_the_operating_system_are_refused(self):
        for header in ("windows.h", "Windows.h", "unistd.h", "dlfcn.h", "pthread.h", "sys/stat.h", "linux/futex.h"):
            with self.subTest(header):
                self.assertEqual(self.found_in("Host/A.cpp", f"#include <{header}>\n"), [1])

    def test_platform_and_tests_may_know_the_operating_system(self):
        for path in ("Platform/Linux/A.cpp", "Tests/Module/A.cpp"):
            self.assertEqual(self.found_in(path, "#include <unistd.h>\n#ifdef __linux__\n#endif\n"), [])

    def test_other_conditions_and_standard_headers_pass(self):
        text = '#if __cplusplus < 201703L\n#endif\n#include <system_error>\n#include "Host/Process.h"\n// #if _WIN32\n'
        self.assertEqual(self.found_in("Src/A.cpp", text), [])

    # Folders

    def test_hosts_tools_and_examples_include_nothing_of_the_module(self):
        for path in ("Host/A.cpp", "Tool/A.cpp", "Examples/A.cpp"):
            self.assertEqual(self.found_in(path, '#include "Src/String.h"\n#include "../Src/Image.h"\n'), [1, 2])
            self.assertEqual(self.found_in(path, '#include "Helpers/Ref.h"\n'), [])

    def test_the_module_and_its_tests_include_it(self):
        for path in ("Src/A.cpp", "Tests/Unit/A.cpp"):
            self.assertEqual(self.found_in(path, '#include "Src/String.h"\n'), [])

    def test_a_query_written_by_hand_is_refused(self):
        for body in ("{", "override\n{", "final {"):
            text = f"Result A::DoQueryInterface(const char* id, void** out) {body}\n    return 0;\n}}\n"
            self.assertEqual(self.found_in("Src/A.cpp", text), [1])

    def test_calling_a_query_and_writing_it_in_helpers_passes(self):
        self.assertEqual(self.found_in("Src/A.cpp", "void F()\n{\n    DoQueryInterface(id, out);\n}\n"), [])
        self.assertEqual(self.found_in("Helpers/A.h", "Result DoQueryInterface(int) final { return 0; }\n"), [])

    # Heads and words

    def test_a_source_without_its_head_is_refused(self):
        for path in ("Src/A.h", "Src/A.cpp", "Tests/A.c"):
            self.write(path, "#pragma once\nint a;\n" + HEAD)
        self.assertEqual([(path, line) for path, line, _ in self.findings()],
                         [("Src/A.cpp", 1), ("Src/A.h", 1), ("Tests/A.c", 1)])

    def test_a_header_without_its_guard_is_refused(self):
        self.write("Src/A.h", HEAD + "// #pragma once\n")
        self.assertEqual([(path, line) for path, line, _ in self.findings()], [("Src/A.h", 1)])

    def test_words_about_where_a_rule_came_from_are_refused_in_every_file(self):
        for words in ("the S" + "pecification says", "by s" + "pec.", "see p" + "art 3.1"):
            for path in ("Src/A.cpp", "README.md", "dev"):
                with self.subTest(words=words, path=path):
                    self.write(path, HEAD + "// fine\n// " + words + "\n")
                    self.assertEqual([line for found, line, _ in self.findings() if found == path], [3])

    def test_words_that_only_look_alike_pass(self):
        self.write("README.md", "A special, unspecified part 3 of version 3.1, inspected.\n")
        self.assertEqual(self.findings(), [])

    # Documentation of operations

    def test_a_documented_operation_passes_with_the_slot_behind_its_bases(self):
        text = "    // Slot 3. Does it.\n    //   out  receives it\n    // Threads: any. Fails: never.\n    virtual void Do() = 0;\n"
        self.assertEqual(self.documented(text), [])

    def test_an_operation_without_documentation_is_refused(self):
        message = "INext::Do: is not documented; its comment begins with 'Slot 3.'"
        self.assertEqual(self.documented("    virtual void Do() = 0;\n"), [message])

    def test_a_comment_apart_from_its_operation_does_not_count(self):
        text = "    // Slot 3. Does it.\n    // Threads: any. Fails: never.\n\n    virtual void Do() = 0;\n"
        self.assertEqual(len(self.documented(text)), 1)

    def test_a_wrong_slot_number_is_refused(self):
        text = "    // Slot 11. Does it.\n    // Threads: any. Fails: never.\n    virtual void Do() = 0;\n"
        self.assertEqual(self.documented(text), ["INext::Do: is in slot 3, its comment says 11"])

    def test_a_comment_without_slot_number_is_refused(self):
        text = "    // Does it.\n    // Threads: any. Fails: never.\n    virtual void Do() = 0;\n"
        self.assertEqual(self.documented(text),
                         ["INext::Do: its comment does not begin with 'Slot 3. ' and a sentence"])

    def test_a_comment_without_threads_or_failures_is_refused(self):
        without_both = "    // Slot 3. Does it.\n    virtual void Do() = 0;\n"
        self.assertEqual(self.documented(without_both),
                         ["INext::Do: its comment has no line that begins with 'Threads:'"])
        for line in ("Threads: any.", "Threads: any. Fails:", "Threads: Fails: never."):
            text = f"    // Slot 3. Does it.\n    // {line}\n    virtual void Do() = 0;\n"
            with self.subTest(line):
                self.assertEqual(self.documented(text), [
                    "INext::Do: its comment does not say 'Threads:' and then 'Fails:', each with a text"])

    def test_a_parameter_behind_the_words_on_threads_is_refused(self):
        text = "    // Slot 3. Does it.\n    // Threads: any. Fails: never.\n    //   out  it\n    virtual void Do(int* out) = 0;\n"
        self.assertEqual(self.documented(text), ["INext::Do: a parameter is documented behind 'Threads:'"])

    def test_a_virtual_destructor_is_refused(self):
        self.assertEqual(self.documented("    virtual ~INext() = default;\n"),
                         ["INext::~INext: a virtual destructor would take a slot"])

    def test_overloads_take_a_slot_each(self):
        text = """
            // Slot 3. Does it.
            // Threads: any. Fails: never.
            virtual void Do(int a) = 0;

            // Slot 4. Does it.
            // Threads: any. Fails: never.
            virtual void Do(double a) = 0;
        """
        self.assertEqual(self.documented(text), [])

    # The script as a whole

    def test_git_decides_which_files_count(self):
        self.write("ignored/A.cpp", "int a;\n")
        self.write(".gitignore", "/ignored/\n")
        subprocess.run(["git", "init", "-q", str(self.root)], check=True)
        self.assertEqual(self.findings(), [])

    def test_without_git_everything_but_the_build_folder_counts(self):
        self.write("build/A.cpp", "int a;\n")
        self.write("Src/build/A.cpp", "int a;\n")
        self.assertEqual([path for path, _, _ in self.findings()], ["Src/build/A.cpp"])

    def test_findings_are_printed_with_file_and_line_and_make_it_fail(self):
        self.write("Src/A.cpp", HEAD + "\n#define X\n")
        output = io.StringIO()
        with contextlib.redirect_stdout(output):
            self.assertEqual(check_house_rules.main([str(self.root)]), 1)
        self.assertEqual(output.getvalue(),
                         "Src/A.cpp:3: the macro X is neither a checking macro nor the export mark\n")

    def test_a_clean_tree_prints_nothing_and_succeeds(self):
        self.write("Src/A.cpp", HEAD)
        output = io.StringIO()
        with contextlib.redirect_stdout(output):
            self.assertEqual(check_house_rules.main([str(self.root)]), 0)
        self.assertEqual(output.getvalue(), "")


if __name__ == "__main__":
    unittest.main()
