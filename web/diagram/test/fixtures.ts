// The cases that the readers in C++ are tested with as well.
import { readFileSync } from "node:fs";
import { join } from "node:path";

/** The cases of a file in tests/fixtures: records of texts and numbers. */
export function fixtures<Case>(file: string): Case[] {
  return JSON.parse(readFileSync(join(PLEXORAS_ROOT, "tests/fixtures", file), "utf8")) as Case[];
}

/** What `step` was refused with; its outcome when it was not. */
export function outcome(step: () => string): string {
  try {
    return step();
  } catch (error) {
    return `refused: ${error instanceof Error ? error.message : String(error)}`;
  }
}
