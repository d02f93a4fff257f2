// SPDX-License-Identifier: MIT
#ifndef TAVIAPP_CGATSPARSER_P_H
#define TAVIAPP_CGATSPARSER_P_H

#include "taviapp/cgatsrows_p.h"

/// Goes through the text of a CGATS file once and makes its tables; the rows are CgatsRowReader's. Not installed.
class CgatsParser
{
public:
    CgatsParser(std::shared_ptr<const std::string> text, CgatsReport &report, const CgatsLimits &limits);

    /// The tables; none if the report holds a refusal.
    std::vector<CgatsTable> run();

private:
    /// A number of columns or rows that the header announces.
    struct Announced {
        std::string_view text;
        size_t line = 0; ///< 0: not announced.
        size_t number() const;
    };

    bool parse();
    bool parseHeaderWord();
    bool parseStructure(CgatsWord word, std::string_view text, size_t line);
    bool parseFormat(size_t line);
    bool parseKeyword(std::string_view name);
    std::string headerValue();
    bool parseBare();
    bool parseRows(bool bare);
    void startTable();
    void checkAnnounced(const Announced &announced, const char *keyword, size_t found, const char *unit);
    bool checkLeftover();
    bool isShort(std::string_view text);
    std::string utf8(std::string_view bytes);

    const std::shared_ptr<const std::string> text_;
    CgatsReport &report_;
    CgatsLimits limits_;
    CgatsCursor cursor_;
    CgatsBudget budget_;
    const size_t notes_before_; ///< Assumptions that the report held before.
    std::vector<CgatsTable> tables_;

    CgatsTable table_; ///< The one whose header is being read; line 0 before it has begun.
    Announced announced_fields_;
    Announced announced_sets_;
    bool has_format_ = false;
    bool structure_seen_ = false;
    bool case_told_ = false;
};

#endif
