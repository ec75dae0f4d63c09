// What the tests and the drawing program need of Node.

declare const PLEXORAS_ROOT: string;

declare const process: {
  readonly argv: readonly string[];
  readonly env: Readonly<Record<string, string | undefined>>;
  readonly pid: number;
  readonly stdin: unknown;
  readonly stdout: { write(text: string): boolean };
  exitCode: number | undefined;
  exit(code: number): never;
};

declare module "node:test" {
  type Body = () => void | Promise<void>;
  export function describe(name: string, body: () => void): void;
  export function test(name: string, body: Body): void;
  export function before(body: Body): void;
  export function after(body: Body): void;
  export function afterEach(body: Body): void;
}

declare module "node:assert/strict" {
  interface Assert {
    (value: unknown, message?: string): asserts value;
    ok(value: unknown, message?: string): asserts value;
    equal(actual: unknown, expected: unknown, message?: string): void;
    notEqual(actual: unknown, expected: unknown, message?: string): void;
    deepEqual(actual: unknown, expected: unknown, message?: string): void;
    match(actual: string, expected: RegExp, message?: string): void;
    throws(body: () => unknown, expected?: RegExp | object): void;
    rejects(body: () => Promise<unknown>, expected?: RegExp | object): Promise<void>;
  }
  const assert: Assert;
  export default assert;
}

declare module "node:fs" {
  export function readFileSync(path: string, encoding: "utf8"): string;
  export function readdirSync(path: string): string[];
  export function writeFileSync(path: string, text: string): void;
  export function mkdtempSync(prefix: string): string;
  export function mkdirSync(path: string, options: { recursive: boolean }): void;
  export function rmSync(path: string, options: { recursive: boolean; force: boolean }): void;
}

declare module "node:child_process" {
  export function execFileSync(program: string, args: readonly string[], options: { encoding: "utf8" }): string;
}

declare module "node:os" {
  export function tmpdir(): string;
}

declare module "node:path" {
  export function dirname(path: string): string;
  export function join(...parts: string[]): string;
  export function relative(from: string, to: string): string;
}

declare module "node:url" {
  export function pathToFileURL(path: string): URL;
}

declare module "node:readline" {
  export function createInterface(options: { input: unknown; crlfDelay?: number }): AsyncIterable<string>;
}

declare module "node:http" {
  interface Request { readonly url?: string }
  interface Response {
    writeHead(status: number, headers: Record<string, string>): void;
    end(body?: string): void;
  }
  interface Server {
    listen(port: number, host: string, done: () => void): void;
    address(): { port: number };
    close(): void;
  }
  export function createServer(answer: (request: Request, response: Response) => void): Server;
}
