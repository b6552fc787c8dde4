// The language server, `velc lsp`, and what is shown of its state.
import * as vscode from "vscode";
import {
  LanguageClient,
  type LanguageClientOptions,
  type Middleware,
  State,
} from "vscode-languageclient/node";
import { findVelc, pluginOptions, reportMissing, runVelc } from "./velc";

export const language = { scheme: "file", language: "st" } as const;

export class Server implements vscode.Disposable {
  /** Called with each client before it is started. */
  onStart: (client: LanguageClient) => void = () => undefined;
  /** Called when a server has ended, by itself or not. */
  onStop: () => void = () => undefined;

  private client: LanguageClient | undefined;
  private readonly log = vscode.window.createOutputChannel("velc");
  private readonly status = vscode.languages.createLanguageStatusItem("velc", language);
  // Starts and stops follow each other.
  private last: Promise<void> = Promise.resolve();

  constructor(private readonly middleware: Middleware) {
    this.status.name = "velc";
    this.status.command = { title: "Restart", command: "velc.restart" };
  }

  restart(): Promise<void> {
    return this.inOrder(async () => {
      await this.end();
      await this.begin();
    });
  }

  stop(): Promise<void> {
    return this.inOrder(() => this.end());
  }

  showLog(): void {
    this.log.show(true);
  }

  /** The client, while the server runs. */
  get running(): LanguageClient | undefined {
    return this.client?.state === State.Running ? this.client : undefined;
  }

  dispose(): void {
    this.status.dispose();
    this.log.dispose();
  }

  private inOrder(step: () => Promise<void>): Promise<void> {
    this.last = this.last.then(step, step);
    return this.last;
  }

  private async begin(): Promise<void> {
    const command = findVelc();
    if (command === undefined) {
      this.show("velc was not found", vscode.LanguageStatusSeverity.Error);
      void reportMissing();
      return;
    }
    // A client whose server ends at once says so many times over.
    const probe = await runVelc(["lsp", "--help"]).catch(() => undefined);
    if (probe?.code !== 0) {
      this.show("velc could not be started", vscode.LanguageStatusSeverity.Error);
      void vscode.window.showErrorMessage(`${command} is no velc with a language server.`);
      return;
    }
    const options: LanguageClientOptions = {
      documentSelector: [language],
      outputChannel: this.log,
      middleware: this.middleware,
    };
    const run = { command, args: ["lsp", ...pluginOptions()] };
    const client = new LanguageClient("velc", "velc", { run, debug: run }, options);
    this.client = client;
    client.onDidChangeState(({ newState }) => this.changed(client, newState));
    this.onStart(client);
    try {
      await client.start();
    } catch (error) {
      this.log.appendLine(`${command}: ${String(error)}`);
      void vscode.window.showErrorMessage(`${command} could not be started as a language server.`);
    }
  }

  private changed(client: LanguageClient, state: State): void {
    if (state === State.Stopped) this.onStop();
    if (client !== this.client) return;
    this.status.busy = state === State.Starting;
    if (state === State.Running) {
      const version = client.initializeResult?.serverInfo?.version ?? "";
      this.show(`velc ${version}`.trimEnd(), vscode.LanguageStatusSeverity.Information);
    } else if (state === State.Stopped) {
      this.show("velc has stopped", vscode.LanguageStatusSeverity.Error);
    }
  }

  private async end(): Promise<void> {
    const client = this.client;
    this.client = undefined;
    if (client !== undefined) await client.dispose().catch(() => undefined);
  }

  private show(text: string, severity: vscode.LanguageStatusSeverity): void {
    this.status.text = text;
    this.status.severity = severity;
  }
}
