;;; vemo-mode.el --- Results of calculations at the ends of their lines  -*- lexical-binding: t; -*-

;;; Commentary:

;; Eglot of Emacs 29 shows hints itself; for an older one they are overlays, asked for after every change.

;;; Code:

(require 'eglot)

(defface vemo-result '((t :inherit shadow)) "Results at the ends of lines." :group 'eglot)

(defvar vemo-mode-syntax-table
  (let ((table (make-syntax-table)))
    (modify-syntax-entry ?/ ". 12" table)
    (modify-syntax-entry ?\n ">" table)
    (modify-syntax-entry ?\( "()" table)
    (modify-syntax-entry ?\) ")(" table)
    table))

(defvar-local vemo--waiting nil "The timer of a question to come.")

(defun vemo--show (hints)
  "Put HINTS at the ends of their lines."
  (remove-overlays (point-min) (point-max) 'vemo t)
  (save-excursion
    (save-restriction
      (widen)
      (mapc (lambda (hint)
              (goto-char (point-min))
              (when (zerop (forward-line (plist-get (plist-get hint :position) :line)))
                (let ((overlay (make-overlay (line-end-position) (line-end-position))))
                  (overlay-put overlay 'vemo t)
                  (overlay-put overlay 'after-string
                               (propertize (concat "  " (plist-get hint :label)) 'face 'vemo-result 'cursor t)))))
            hints))))

(defun vemo--ask (buffer)
  "Ask the server for the results in BUFFER."
  (when (buffer-live-p buffer)
    (with-current-buffer buffer
      (setq vemo--waiting nil)
      (when-let ((server (eglot-current-server)))
        (eglot--signal-textDocument/didChange)
        (jsonrpc-async-request
         server :textDocument/inlayHint
         (list :textDocument (eglot--TextDocumentIdentifier)
               :range (list :start '(:line 0 :character 0)
                            :end (list :line (line-number-at-pos (point-max)) :character 0)))
         :success-fn (lambda (hints)
                       (when (buffer-live-p buffer) (with-current-buffer buffer (vemo--show hints))))
         :error-fn #'ignore)))))

(defun vemo--changed (&rest _)
  "Ask anew when the keys that are typed rest."
  (unless vemo--waiting
    (setq vemo--waiting (run-with-idle-timer 0.05 nil #'vemo--ask (current-buffer)))))

(defun vemo--connected ()
  "Show results where Eglot does not."
  (when (and (derived-mode-p 'vemo-mode) (not (fboundp 'eglot-inlay-hints-mode)))
    (add-hook 'after-change-functions #'vemo--changed nil t)
    (vemo--changed)))

;;;###autoload
(define-derived-mode vemo-mode text-mode "Vemo"
  "Major mode for documents of calculations."
  (setq-local comment-start "// ")
  (setq-local comment-end ""))

;;;###autoload
(add-to-list 'auto-mode-alist '("\\.vemo\\'" . vemo-mode))
(add-to-list 'eglot-server-programs '(vemo-mode "vemo" "lsp"))
(add-hook 'eglot-managed-mode-hook #'vemo--connected)

(provide 'vemo-mode)
;;; vemo-mode.el ends here
