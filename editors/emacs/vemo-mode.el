;;; vemo-mode.el --- Results of calculations at the ends of their lines  -*- lexical-binding: t; -*-

;;; Code:

(defvar vemo-mode-syntax-table
  (let ((table (make-syntax-table)))
    (modify-syntax-entry ?/ ". 12" table)
    (modify-syntax-entry ?\n ">" table)
    (modify-syntax-entry ?\( "()" table)
    (modify-syntax-entry ?\) ")(" table)
    table))

;;;###autoload
(define-derived-mode vemo-mode text-mode "Vemo"
  "Major mode for documents of calculations."
  (setq-local comment-start "// ")
  (setq-local comment-end ""))

;;;###autoload
(add-to-list 'auto-mode-alist '("\\.vemo\\'" . vemo-mode))

(with-eval-after-load 'eglot
  (add-to-list 'eglot-server-programs '(vemo-mode "vemo" "lsp")))

(provide 'vemo-mode)
;;; vemo-mode.el ends here
