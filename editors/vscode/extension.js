// Results as decorations: hints of the editor's own wait more than a second after a key stroke.
const vscode = require('vscode');
const { LanguageClient } = require('vscode-languageclient/node');

let client;

const results = vscode.window.createTextEditorDecorationType({
  after: { margin: '0 0 0 2em', color: new vscode.ThemeColor('editorCodeLens.foreground') },
  rangeBehavior: vscode.DecorationRangeBehavior.ClosedOpen,
});

async function show(editor) {
  const document = editor.document;
  if (document.languageId !== 'vemo' || !client || !client.isRunning() || !editor.visibleRanges.length) return;
  const version = document.version;
  const around = 200;
  const first = Math.min(...editor.visibleRanges.map((each) => each.start.line));
  const last = Math.max(...editor.visibleRanges.map((each) => each.end.line));
  const range = {
    start: { line: Math.max(first - around, 0), character: 0 },
    end: { line: last + around, character: 0 },
  };
  const params = { textDocument: { uri: document.uri.toString() }, range };
  const hints = await client.sendRequest('textDocument/inlayHint', params).catch(() => null);
  if (!hints || document.version !== version) return;
  editor.setDecorations(
    results,
    hints.map((hint) => {
      const end = new vscode.Position(hint.position.line, hint.position.character);
      return { range: new vscode.Range(end, end), renderOptions: { after: { contentText: hint.label } } };
    }),
  );
}

function showAll() {
  vscode.window.visibleTextEditors.forEach(show);
}

function copy(form) {
  const editor = vscode.window.activeTextEditor;
  if (editor) return vscode.commands.executeCommand('vemo.results', editor.document.uri.toString(), form);
}

// The server answers with the text; what becomes of it is done here.
async function executeCommand(command, args, next) {
  const text = await next(command, args);
  if (command === 'vemo.results' && typeof text === 'string') await vscode.env.clipboard.writeText(text);
  return text;
}

async function activate(context) {
  const command = vscode.workspace.getConfiguration('vemo').get('path');
  client = new LanguageClient(
    'vemo',
    'Vemo',
    { command, args: ['lsp'] },
    { documentSelector: [{ language: 'vemo' }], middleware: { provideInlayHints: () => [], executeCommand } },
  );
  await client.start();
  client.onRequest('workspace/inlayHint/refresh', showAll);
  context.subscriptions.push(
    client,
    // After the client's own listener, which tells the server of the change.
    vscode.workspace.onDidChangeTextDocument((event) =>
      setTimeout(() => vscode.window.visibleTextEditors.filter((e) => e.document === event.document).forEach(show)),
    ),
    vscode.window.onDidChangeVisibleTextEditors((editors) => editors.forEach(show)),
    vscode.window.onDidChangeTextEditorVisibleRanges((event) => show(event.textEditor)),
    vscode.commands.registerCommand('vemo.copyText', () => copy('text')),
    vscode.commands.registerCommand('vemo.copyCsv', () => copy('csv')),
    vscode.commands.registerCommand('vemo.copyMarkdown', () => copy('markdown')),
  );
  showAll();
}

function deactivate() {
  return client && client.stop();
}

module.exports = { activate, deactivate };
