// The JSON of jobs and of all that is told about them: one object, as docs/json.md tells, behind every door.
//
// Keys keep their order. Bytes that are not UTF-8 become U+FFFD. Functions with a path give a line: an object that begins
// with the version and the path, and a line feed.
#pragma once

#include <core/export.hpp>
#include <gjf/core/check/checker.hpp>
#include <gjf/core/check/fix_text.hpp>
#include <gjf/core/editing/edited_text.hpp>
#include <gjf/core/knowledge/knowledge.hpp>
#include <gjf/core/next/next_job.hpp>
#include <gjf/core/output/diagnosis.hpp>
#include <gjf/core/predicate/job_file.hpp>
#include <gjf/core/reader/job_layout.hpp>
#include <gjf/core/report/job_changes.hpp>
#include <gjf/core/route/route_completion.hpp>
#include <gjf/core/schema/simple_yaml_parser.hpp>
#include <gjf/core/selection/selection.hpp>

#include <cstddef>
#include <string>
#include <vector>

namespace quor::input::gaussian {

/// The first value of every object; it grows when a key goes or changes its meaning.
inline constexpr int json_version = 1;

/// Returns one job as an object; what it does not have has no key. Its route must have been interpreted to be told.
QUOR_GJF_API std::string job_json(const GJFData& job);

/// Returns the line about the jobs of a file; of one that cannot be read, it has the first fault alone.
QUOR_GJF_API std::string report_json(const std::string& path, const std::vector<GJFData>& jobs);
QUOR_GJF_API std::string readings_json(const std::string& path, const std::vector<JobReading>& readings);
/// The same of chosen jobs, counted from 0, with the files that each names.
QUOR_GJF_API std::string readings_json(const JobFile& file, const std::vector<std::size_t>& jobs);

/// Returns the line about a file that cannot be used.
QUOR_GJF_API std::string error_json(const std::string& path, const std::string& message);

/// Returns the line about what was found in a file.
QUOR_GJF_API std::string check_json(const std::string& path, const std::vector<Finding>& findings);

/// Returns the line about a text that was mended: the text, which fixes were applied and dropped, and what `check_json` says
/// of it. Bytes that are not UTF-8 are not kept.
QUOR_GJF_API std::string fix_json(const std::string& path, const FixedText& fixed);

/// Returns the line about a text that was edited: the text, whether it changed or the change is refused, what is said of the
/// operations and of jobs that cannot be read, and the findings that are new. Bytes that are not UTF-8 are not kept.
QUOR_GJF_API std::string edit_json(const std::string& path, const std::string& before, const EditedText& edited);

/// Returns a line about one code of the checker: its code, its title, and what else of it is not empty.
QUOR_GJF_API std::string check_code_json(const CheckDescription& description);

/// Returns the line about the jobs of a file, counted from 0, that fit a condition.
QUOR_GJF_API std::string find_json(const JobFile& file, const std::vector<std::size_t>& jobs);

/// Returns the line about chosen fields of jobs of a file: numbers, texts, and lists where a job may have several; null for
/// what is not known or not there. Memory is in bytes.
QUOR_GJF_API std::string fields_json(const JobFile& file, const std::vector<std::size_t>& jobs,
                                     const std::vector<JobField>& fields);

/// Returns the line about what differs between two files.
QUOR_GJF_API std::string diff_json(const std::string& path, const std::string& other,
                                   const std::vector<JobPairChanges>& changes);

/// Returns the line about the atoms that a selection takes in each job of a file: their numbers and lines, or why it does
/// not fit the job.
QUOR_GJF_API std::string selection_json(const std::string& path, const std::vector<JobReading>& readings,
                                        const Selection& selection);

/// Returns the line about what happened to the job of an output; with `points`, each of them too.
QUOR_GJF_API std::string diagnosis_json(const std::string& path, const Diagnosis& diagnosis,
                                        const std::vector<OutputPoint>* points = nullptr);

/// Returns the line about new jobs, or why there are none; with their texts where they are not written to files.
QUOR_GJF_API std::string next_jobs_json(const std::string& path, const std::vector<NewJob>& jobs, bool written);
QUOR_GJF_API std::string refused_job_json(const std::string& path, const std::string& reason);

/// Returns the line about a code of outputs, with all that is said of it.
QUOR_GJF_API std::string output_code_json(const OutputCodeDescription& description);

/// Returns the line about which lines of a file hold what.
QUOR_GJF_API std::string outline_json(const std::string& path, const std::vector<JobReading>& readings);

/// Returns the line about an interpreted route: its text, what it says, the sections that it asks for, and what
/// was found in it.
QUOR_GJF_API std::string route_json(const std::string& text, const ParsedKeywords& route,
                                    const std::vector<ExtraInputSectionKind>& sections,
                                    const std::vector<Finding>& findings);

/// Returns the line about what may complete a route.
QUOR_GJF_API std::string completion_json(const RouteContext& context, const std::vector<Completion>& completions);

/// Finds what a text means: a route word, an option as keyword=option, or a Link 0 key behind "%"; null where nothing is
/// known.
QUOR_GJF_API const WordDescription* describe_word(const SimpleYAMLParser& schema, const std::string& text);

/// Returns the line about what the vocabulary says of a word, and what the word means.
QUOR_GJF_API std::string word_json(const SimpleYAMLParser& schema, const std::string& word);

}  // namespace quor::input::gaussian
