/*
 * What one call of quarnprompt asks: a text, its type, and which answers are offered. Reads the
 * command line; shows nothing.
 */
#pragma once

#include <optional>
#include <string>
#include <vector>

/** An answer that can be offered. Its value is its letter in a mask. */
enum class Answer : char { proceed = 'p', abort = 'a', yes = 'y', no = 'n' };

enum class PromptType { error, warning, information };

struct PromptRequest {
    PromptType type = PromptType::information;
    std::vector<Answer> answers{}; // at least one, each once; the first is the default
    std::string text{};            // without blanks around it
    bool prefer_gui = false;
};

/** Reads the words after the program's name; nothing when they are no complete request. */
std::optional<PromptRequest> read_request(const std::vector<std::string>& words);

/** The name of a type as it stands before a printed text. */
const char* name_of(PromptType type);

/** What a button for the answer says. */
const char* name_of(Answer answer);

/** The exit status that reports an answer: 0 for proceed and yes, 1 for abort and no. */
int status_of(Answer answer);

/** The answer that stands for "nobody agreed": abort or no where one is offered, else the default.
 */
Answer unanswered(const PromptRequest& request);
