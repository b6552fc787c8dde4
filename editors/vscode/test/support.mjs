import { readdirSync, readFileSync } from "node:fs";
import { spawn, execFile } from "node:child_process";
import { createRequire } from "node:module";
import { dirname, join } from "node:path";
import { fileURLToPath, pathToFileURL } from "node:url";
import { promisify } from "node:util";

const require = createRequire(import.meta.url);
const rpc = require("vscode-jsonrpc/node");

export const folder = dirname(dirname(fileURLToPath(import.meta.url)));
export const repository = join(folder, "..", "..");
export const velc = process.env.VELC ?? join(repository, "build/release/bin/velc");
export const readJson = (name) => JSON.parse(readFileSync(join(folder, name), "utf8"));
export const manifest = readJson("package.json");

/** What a command prints, also if it fails: both streams one after the other. */
export async function output(command, args, options = {}) {
  const run = promisify(execFile)(command, args, { encoding: "utf8", ...options });
  const { stdout, stderr } = await run.catch((error) => {
    if (typeof error.code !== "number") throw error;
    return error;
  });
  return stdout + stderr;
}

/** The programs of examples/, which have the style of velc fmt. */
export function examples() {
  const path = join(repository, "examples");
  const names = readdirSync(path).filter((name) => name.endsWith(".st"));
  return names.map((name) => ({ name, text: readFileSync(join(path, name), "utf8") }));
}

/** The programs of the pages that explain the words of the language. */
export function explained() {
  const path = join(repository, "docs/language");
  return readdirSync(path).flatMap((name) => {
    const page = readFileSync(join(path, name), "utf8");
    return [...page.matchAll(/^```st\n(.*?)^```$/gms)].map(([, text], i) => ({
      name: `${name} ${i}`,
      // Statements have their declarations in a comment before them.
      text: text.replace(/^\(\* (VAR.*?) \*\)(.*)/s, "PROGRAM Example\n$1$2END_PROGRAM\n"),
    }));
  });
}

/** A conversation with `velc lsp`. */
export async function withServer(talk) {
  const server = spawn(velc, ["lsp"], { stdio: ["pipe", "pipe", "inherit"] });
  const connection = rpc.createMessageConnection(
    new rpc.StreamMessageReader(server.stdout),
    new rpc.StreamMessageWriter(server.stdin),
  );
  connection.listen();
  try {
    const { capabilities } = await connection.sendRequest("initialize", { capabilities: {} });
    await connection.sendNotification("initialized", {});
    await talk(connection, capabilities);
    await connection.sendRequest("shutdown");
    await connection.sendNotification("exit");
  } finally {
    connection.dispose();
    server.kill();
  }
}

export const uriOf = (path) => pathToFileURL(path).href;
