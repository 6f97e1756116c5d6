// Search text that people type, made into a search string of the event criteria.

/**
 * `text` as a search string: blanks separate words, everything else means itself. The engines read
 * %, _ and [ as wildcards unless they stand in brackets.
 */
export function literalSearch(text) {
    return text.trim().replace(/[%_[]/g, "[$&]").replace(/\s+/g, " ");
}
