"""All rules over one tree."""

from structureRules import buildRules, nameRules, textRules
from structureRules.breach import Breach
from structureRules.includeRules import IncludeRules
from structureRules.layerTable import LayerTable
from structureRules.sourceTree import SourceTree


def check(tree: SourceTree, table: LayerTable) -> list[Breach]:
    """Returns the breaches of all rules, by file and line."""
    found: list[Breach] = []
    includes = IncludeRules(table, tree.paths)
    for source in tree.sources:
        found += includes.breaches(source)
        found += nameRules.names(source)
        found += textRules.lengths(source)
        found += textRules.habits(source)
        found += textRules.public_headers(source, table)
        found += textRules.platform_conditions(source, table)
        found += textRules.test_cases(source)
    found += includes.stale_exceptions()
    found += buildRules.built(tree.sources, tree.build_files)
    return sorted(found)
