// SPDX-License-Identifier: MIT
#pragma once

#include <ostream>
#include <set>
#include <string>
#include <vector>

namespace tvx::test
{

// A module of Tests/BadModules, and what tvx check has to say of it.
struct BadModule
{
    const char* name;
    int exitCode;
    std::set<std::string> findings;           // a result and a check's name each; what passes or is skipped is none
    std::vector<std::string> selection = {};  // names and classes of the checks that are run, where not all
    const char* timeout = "60";               // in seconds
};

// What a test is called.
inline void PrintTo(const BadModule& module, std::ostream* stream)
{
    *stream << module.name;
}

// Nothing is wrong: this one measures the others.
inline std::vector<BadModule> GetPlainModules()
{
    return {
        {"NothingWrong", 0, {}},
    };
}

// The document. Where it cannot be read as a whole, what needs it is skipped.
inline std::vector<BadModule> GetDocuments()
{
    return {
        {"AnotherVersion", 1, {"failed document-version-is-1"}},
        {"ByteOrderMark", 1, {"failed document-has-no-byte-order-mark"}},
        {"EmptyProperty", 1, {"failed document-required-texts-are-filled"}},
        {"LineFeeds", 1, {"failed document-ends-lines-with-cr-lf"}},
        {"MissingContract", 1, {"failed document-export-has-contracts"}},
        // Every check that asks for the exports fails.
        {"MissingExport",
         1,
         {"failed load-gives-exports-in-any-order", "failed export-every-listed-id-is-given"},
         {"export-every-listed-id-is-given", "load", "document"}},
        {"MissingName", 1, {"failed document-metadata-has-one-name"}},
        {"NoDocument", 1, {"failed document-is-found"}},
        {"NotWellFormed", 1, {"failed document-is-well-formed"}},
        {"OptionalYes", 1, {"failed document-optional-says-true"}},
        {"RepeatedId", 1, {"failed document-ids-are-unique"}},
        {"UnknownElement", 0, {"warning document-has-known-elements-only"}},
        {"XmlDeclaration", 1, {"failed document-has-no-declaration"}},
    };
}

// Loading, unloading, and what goes on around.
inline std::vector<BadModule> GetLoading()
{
    return {
        {"ChangesSurroundings",
         1,
         {"failed load-leaves-the-locale", "failed load-leaves-the-current-folder", "failed load-leaves-the-rounding",
          "failed load-leaves-the-terminate-handler", "failed load-leaves-the-new-handler",
          "failed load-leaves-the-environment", "failed load-leaves-the-output-stream"}},
        // Nothing else that loads the module is run.
        {"CrashesAtLoad", 4, {"crashed load-succeeds"}},
        // Every check that unloads the module crashes.
        {"CrashesAtUnload",
         4,
         {"crashed load-is-undone-by-unloading"},
         {"document", "load-succeeds", "load-is-undone-by-unloading", "exports"}},
        {"GarbageAtLoad", 1, {"failed load-writes-whole-lines-at-its-start"}},
        {"GarbageAtUnload", 1, {"failed load-writes-whole-lines-at-its-end"}},
        {"HangsAtLoad", 4, {"crashed load-succeeds"}, {}, "2"},
        // It is a matter of luck whether the thread runs right after a single unloading; in a hundred it does.
        {"LeavesThread",
         4,
         {"crashed load-repeats-a-hundred-times", "failed load-starts-no-thread"},
         {"load-repeats-a-hundred-times", "load-starts-no-thread"}},
        {"NeedsMissingFunction", 3, {"failed load-succeeds"}},
        {"NoGetExport", 3, {"failed load-exports-get-export-only", "failed load-succeeds"}},
        {"PinsItself",
         1,
         {"failed load-is-undone-by-unloading", "failed load-is-undone-after-use",
          "failed load-repeats-a-hundred-times", "failed load-is-outlived-by-a-thread",
          "failed load-forgets-a-thread-that-ended", "failed load-is-undone-on-another-thread",
          "failed slot-object-7-subscribe-destroyed"}},
        // Everything else is right, and takes long.
        {"SilentRegistry",
         1,
         {"failed load-says-registry-is-created", "failed load-says-registry-is-deleted"},
         {"load", "exports"}},
        {"StartsThread", 1, {"failed load-starts-no-thread"}},
        {"StaysForItsThreads",
         1,
         {"failed load-is-undone-after-use", "failed load-repeats-a-hundred-times",
          "failed load-is-outlived-by-a-thread", "failed load-forgets-a-thread-that-ended",
          "failed load-is-undone-on-another-thread", "failed slot-object-7-subscribe-destroyed"}},
        {"TwoSymbols", 1, {"failed load-exports-get-export-only"}},
        {"UniqueSymbol",
         1,
         {"failed load-exports-get-export-only", "failed load-is-undone-by-unloading",
          "failed load-is-undone-after-use", "failed load-repeats-a-hundred-times",
          "failed load-is-outlived-by-a-thread", "failed load-forgets-a-thread-that-ended",
          "failed load-is-undone-on-another-thread", "failed slot-object-7-subscribe-destroyed"}},
    };
}

// GetExport.
inline std::vector<BadModule> GetExports()
{
    return {
        {"AnswersContracts", 1, {"failed export-contract-is-no-export-id"}},
        {"CrashesOnNullOut", 4, {"crashed export-null-out-is-refused"}},
        {"ForgetsToCountExport",
         1,
         {"failed export-gains-one-reference-each-time", "failed export-does-not-mind-askers-who-keep-it",
          "failed slot-object-7-subscribe-destroyed", "failed thread-exports-are-given-to-many"}},
        // Every check that asks for the exports fails.
        {"GivesNull",
         1,
         {"failed load-gives-exports-in-any-order", "failed export-every-listed-id-is-given"},
         {"export-every-listed-id-is-given", "load"}},
        // Every check that asks for the export would take its two seconds.
        {"HangsInGetExport",
         4,
         {"crashed export-every-listed-id-is-given"},
         {"export-every-listed-id-is-given", "load-succeeds", "document"},
         "2"},
        {"IgnoresCase", 1, {"failed export-id-in-another-case-is-refused"}},
        {"LeaksExport",
         1,
         {"failed export-gains-one-reference-each-time", "failed export-does-not-mind-askers-who-keep-it",
          "failed slot-object-7-subscribe-destroyed", "failed thread-exports-are-given-to-many"}},
        {"LeavesOutUntouched",
         1,
         {"failed export-unknown-id-is-refused", "failed export-empty-id-is-refused",
          "failed export-id-in-another-case-is-refused", "failed export-longer-id-is-refused",
          "failed export-shorter-id-is-refused", "failed export-id-of-another-version-is-refused",
          "failed export-contract-is-no-export-id", "failed export-interface-is-no-export-id",
          "failed export-null-id-is-refused", "failed export-refusal-leaves-exports-alone"}},
        {"NewObjectEachTime",
         1,
         {"failed load-twice-is-once", "failed load-gives-exports-in-any-order",
          "failed export-is-the-same-object-every-time", "failed export-is-the-same-object-on-every-thread",
          "failed export-gains-one-reference-each-time", "warning export-stays-with-the-module",
          "failed export-does-not-mind-askers-who-keep-it", "failed export-overwrites-what-stood-in-out",
          "failed export-is-found-by-the-text-of-its-id", "failed export-refusal-leaves-exports-alone",
          "failed thread-exports-are-given-to-many"}},
        {"OneObjectForTwo", 0, {"warning export-objects-differ"}},
        // Every check that asks for the exports hears it.
        {"PrintsInGetExport", 1, {"failed export-is-given-in-silence"}, {"export-is-given-in-silence", "load"}},
        {"TakesLongerIds", 1, {"failed export-longer-id-is-refused"}},
        {"TakesShorterIds", 1, {"failed export-empty-id-is-refused", "failed export-shorter-id-is-refused"}},
        {"ThrowsInt", 1, {"failed export-null-id-is-refused", "failed export-null-out-is-refused"}},
    };
}

// Queries.
inline std::vector<BadModule> GetQueries()
{
    return {
        {"AnswersNullOut", 1, {"failed identity-null-out-is-refused"}},
        {"AnswersOtherVersions",
         1,
         {"failed identity-prefix-is-refused", "failed identity-longer-id-is-refused",
          "failed identity-other-version-is-refused"}},
        {"AnswersPrefixes", 1, {"failed identity-prefix-is-refused"}},
        {"CountsRefusals",
         1,
         {"failed identity-answer-adds-one-reference", "failed identity-unknown-id-is-refused",
          "failed identity-export-id-is-refused", "failed identity-prefix-is-refused",
          "failed identity-longer-id-is-refused", "failed identity-other-case-is-refused",
          "failed identity-other-version-is-refused", "failed identity-null-out-is-refused",
          "failed slot-object-7-subscribe-destroyed"}},
        {"EmptiesRefusedOut",
         1,
         {"failed identity-query-answers-or-refuses", "failed identity-unknown-id-is-refused",
          "failed identity-export-id-is-refused", "failed identity-prefix-is-refused",
          "failed identity-longer-id-is-refused", "failed identity-other-case-is-refused",
          "failed identity-other-version-is-refused", "failed slot-object-base-3-query-interface",
          "failed slot-object-base-4-do-query-interface"}},
        {"HasTwoIdentities",
         1,
         {"failed identity-is-one-through-all-faces", "failed identity-faces-answer-alike",
          "failed identity-answer-adds-one-reference", "failed identity-faces-count-alike"}},
        // Every check that queries hears it.
        {"PrintsInQuery",
         1,
         {"failed identity-queries-are-silent"},
         {"identity-queries-are-silent", "load", "exports"}},
        {"RefusesByAnotherCode",
         1,
         {"failed identity-query-answers-or-refuses", "failed identity-unknown-id-is-refused",
          "failed identity-export-id-is-refused", "failed identity-prefix-is-refused",
          "failed identity-longer-id-is-refused", "failed identity-other-case-is-refused",
          "failed identity-other-version-is-refused", "failed identity-null-out-is-refused",
          "failed slot-object-base-3-query-interface", "failed slot-object-base-4-do-query-interface"}},
    };
}

// Dictionaries, where anything may go wrong in an operation.
inline std::vector<BadModule> GetOperations()
{
    return {
        {"AbortsInOperation", 4, {"crashed serialise-map-reports-null-writer", "crashed value-map-random-walk"}},
        {"AbsentKeyLeavesOut",
         1,
         {"failed value-map-lookups-are-alike", "failed value-map-absent-key-empties-out",
          "failed value-map-null-key-is-absent", "failed value-map-empty-key-is-a-key",
          "failed value-map-copies-its-keys", "failed value-map-is-born-empty", "failed value-map-maps-are-independent",
          "failed value-map-random-walk"}},
        {"ExitsInOperation", 4, {"crashed value-map-null-key-is-absent", "crashed value-map-random-walk"}},
        // Every check that writes the empty key would take its two seconds.
        {"HangsInOperation",
         4,
         {"crashed value-map-empty-key-is-a-key"},
         {"value-map-empty-key-is-a-key", "value-map-is-born-empty", "document"},
         "2"},
        {"PrintsInOperation",
         1,
         {"failed value-map-lookups-are-alike", "failed value-map-null-key-is-absent",
          "failed value-map-null-value-is-present", "failed value-map-null-replaces-a-value",
          "failed value-map-death-releases-each-value", "failed value-map-agrees-with-a-model",
          "failed value-map-random-walk", "failed serialise-map-passes-null-on",
          "failed serialise-map-ignores-failing-writer"}},
        {"ReportGoesToErrors", 1, {"failed report-map-null-key", "failed value-map-random-walk"}},
        {"ReportIsDoubled", 1, {"failed report-map-null-key", "failed value-map-random-walk"}},
        {"ReportIsMissing", 1, {"failed report-map-null-key", "failed value-map-random-walk"}},
        {"ReportIsOfAnotherMacro", 1, {"failed report-map-null-key", "failed value-map-random-walk"}},
        {"ThrowsException", 1, {"failed report-map-null-key", "failed value-map-random-walk"}},
    };
}

// Strings and variants.
inline std::vector<BadModule> GetValues()
{
    return {
        {"ConvertsVariants", 1, {"failed value-variant-int-answers-get-int-only", "failed value-variant-random-walk"}},
        // Every check that reads a string crashes, but those of the slots, which look at the pointer first.
        {"ExchangedSlots", 1, {"failed slot-string-11-get-text", "failed slot-string-12-get-length"}, {"slots"}},
        // The first Release takes the string: only what looks at the count beforehand is sure to fail and not to crash.
        {"ForgetsToCountStrings",
         1,
         {"failed identity-strings-are-made-with-one-reference", "failed slot-string-6-get-ref-count",
          "failed value-string-belongs-to-its-caller"},
         {"identity-strings-are-made-with-one-reference", "value-string-belongs-to-its-caller",
          "slot-string-6-get-ref-count"}},
        // Every check that counts the references on a string fails.
        {"LeaksStrings",
         1,
         {"failed identity-strings-are-made-with-one-reference", "failed identity-strings-count-their-references",
          "failed identity-strings-tell-their-end", "failed identity-strings-tell-their-end-to-each-subscription",
          "failed value-string-belongs-to-its-caller"},
         {"identity", "value-string-belongs-to-its-caller"}},
        {"ReportsTooMuch", 1, {"failed report-variant-creations-stay-silent", "failed value-variant-random-walk"}},
        {"SharesEmptyString", 1, {"failed value-string-is-new-each-time", "failed value-string-random-walk"}},
        {"StringsAnswerIObject",
         1,
         {"failed identity-string-answers-its-interfaces", "failed value-string-random-walk"}},
    };
}

// Collections, settings maps, variant arrays.
inline std::vector<BadModule> GetContainers()
{
    return {
        {"AbsentFails",
         1,
         {"failed value-settings-map-absent-key-leaves-int-untouched", "failed value-settings-map-random-walk"}},
        {"ChangedInBatchMode",
         1,
         {"failed value-settings-map-random-walk", "failed event-settings-map-set-sub-map-tells-once",
          "failed event-settings-map-set-sub-map-silent-in-batch-mode",
          "failed event-settings-map-set-sub-map-tells-when-all-is-written",
          "failed event-settings-map-tells-many-writes-once", "failed event-settings-map-follows-its-states-for-long",
          "failed event-settings-map-holds-writes-back-in-batch-mode",
          "failed event-settings-map-subscribes-each-event-for-itself",
          "failed event-settings-map-subscribing-null-is-ignored",
          "failed serialise-object-entry-is-pending-in-batch-mode"}},
        {"ExchangedNames",
         1,
         {"failed slot-plugin-13-get-name", "failed slot-plugin-14-get-subname",
          "failed value-plugin-gives-the-text-of-each-fixed-key",
          "failed value-plugin-metadata-belongs-to-the-export"}},
        {"FiresUpdatedFirst",
         1,
         {"failed value-collection-random-walk", "failed event-collection-move-fires-moved-then-updated",
          "failed event-collection-move-to-next-index-fires"}},
        {"ForgetsToRelease",
         1,
         {"failed report-collection-clear-forwards-a-failure", "failed value-collection-remove-last-takes-the-last",
          "failed value-collection-clear-removes-everything", "failed value-collection-grows-to-a-thousand",
          "failed value-collection-changes-without-events", "failed value-collection-collections-are-independent",
          "failed value-collection-random-walk", "failed event-collection-item-lives-through-its-events"}},
        {"IndexOfLeavesOut",
         1,
         {"failed value-collection-index-of-absent-item", "failed value-collection-compares-pointers",
          "failed value-collection-random-walk"}},
        {"NullDereference",
         4,
         {"crashed value-collection-get-item-refuses-null-out", "crashed value-collection-random-walk"}},
        // Every check that reads texts back fails.
        {"PresentIsZero",
         1,
         {"failed value-settings-map-gives-its-texts", "failed value-settings-map-text-is-a-new-string",
          "failed value-settings-map-text-outlives-the-map"},
         {"value-settings-map-gives-*", "value-settings-map-text-*", "slots"}},
        {"StrictVariantArrays",
         1,
         {"failed serialise-variant-array-reads-any-size",
          "failed serialise-variant-array-refuses-what-no-memory-holds", "failed value-variant-array-random-walk"}},
        {"WritesSevenDigits",
         1,
         {"failed value-settings-map-double-has-six-digits",
          "failed value-settings-map-double-has-an-exponent-where-needed",
          "failed value-settings-map-double-extremes-have-texts",
          "failed value-settings-map-double-comes-back-in-six-digits", "failed value-settings-map-types-mix",
          "failed serialise-settings-map-writes-numbers-as-texts", "failed value-settings-map-random-walk"}},
    };
}

// Images and the logger.
inline std::vector<BadModule> GetImages()
{
    return {
        // The checks of the locks wait for a thread that is not let in.
        {"CountsLocks",
         1,
         {"failed slot-image-18-get-data", "failed slot-image-23-is-locked", "failed image-copy-unlocks-its-source",
          "failed image-locks-are-not-counted"},
         {"image-locks-are-not-counted", "image-copy-unlocks-its-source", "slots"}},
        // The imports are not found, which stay with the class that it derives from.
        {"HidesFilteredMessages",
         1,
         {"failed logger-tells-of-a-message-below-the-minimum"},
         {"logger-tells-*", "logger-levels-*"}},
        {"ReversesOneRow", 1, {"failed image-set-row-order-refuses-fewer-than-two-rows", "failed image-random-walk"}},
    };
}

inline std::vector<BadModule> GetBadModules()
{
    std::vector<BadModule> modules;
    for (const auto& group : {GetPlainModules(), GetDocuments(), GetLoading(), GetExports(), GetQueries(),
                              GetOperations(), GetValues(), GetContainers(), GetImages()})
        modules.insert(modules.end(), group.begin(), group.end());
    return modules;
}

}  // namespace tvx::test
