// The counts of the branches that a process took, in a build that measures them (scripts/coverage); in any other these do nothing.
// A process that ends by exit adds its counts to the file by itself.
#pragma once

// Adds the counts to the file and begins anew: for a process that ends at once, or becomes another program.
void WriteBranchCounts();

// For a forked child: begins anew, since its parent adds its own counts, and writes them when the child aborts, too.
void BeginBranchCountsOfChild();
